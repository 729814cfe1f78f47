// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

#include <QSize>

namespace conversion
{

// The output size for an image of `size`. Integer arithmetic throughout: percentages are truncated, and the
// factor of the relative mode is an integer by design, so the other side often stays unchanged. A side may be
// zero, or larger than any image can be (clamped to INT_MAX).
QSize resizedSize(const QSize &size, const Resize &resize);

// Scales to exactly `size`, ignoring the aspect ratio. Smooth for conversions, nearest neighbour for
// previews. More than eight bits per channel are kept. Null if out of memory.
QImage resized(const QImage &image, const QSize &size, bool preview);

} // namespace conversion
