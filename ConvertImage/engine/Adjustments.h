// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

namespace conversion
{

// Contrast, brightness, gamma, sepia, inversion (in this order, without intermediate rounding or clamping)
// and blur; returns the image unchanged if none is set. Colours are as in QImage::Format_RGB32; alpha is
// kept. The result is bit-identical to a straightforward computation in double precision. Blur ignores the
// hidden colour of fully transparent pixels. Any thread.
QImage adjusted(const QImage &image, const Adjustments &adjustments);

// Converts to grey as Qt does from sRGB: QImage::Format_Grayscale8, or ARGB32 if any pixel is transparent.
QImage grey(const QImage &image);

} // namespace conversion
