// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

namespace conversion
{

// Contrast, brightness, gamma, sepia, inversion (in this order, without rounding or limits between them) and
// blur; the image as it is when none is asked for. Colours are those of QImage::Format_RGB32, and the alpha
// of the picture is kept. The result is, to the byte, that of a plain computation in double precision. The
// blur mixes what is hidden under full transparency into nothing. Any thread.
QImage adjusted(const QImage &image, const Adjustments &adjustments);

// Grey as Qt converts sRGB to it: QImage::Format_Grayscale8, or ARGB32 where the picture is transparent
// anywhere.
QImage grey(const QImage &image);

} // namespace conversion
