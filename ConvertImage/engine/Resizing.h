// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

#include <QSize>

namespace conversion
{

// The size of the output of a picture of `size`. Whole-number arithmetic throughout: percentages are cut off,
// and the factor of the relative mode is an integer on purpose, so that the other side often stays as it is.
// A side may come out as zero, or larger than any picture can be (then as the largest int).
QSize resizedSize(const QSize &size, const Resize &resize);

// To exactly `size`, whatever the shape. Smooth for conversions, nearest pixel for previews. Pictures of more
// than eight bits a channel stay so. Null when there is no memory for it.
QImage resized(const QImage &image, const QSize &size, bool preview);

} // namespace conversion
