// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>
#include <QImage>

namespace conversion
{

// One GIF89 frame through GIFLIB: not interlaced, without transparency. A colour table of 1 to 256 colours is
// used as it is, filled up with black to a power of two; any other picture is reduced to 256 colours, with
// dithering. Empty when it was written, otherwise what went wrong, for the log.
QString writeGif(QIODevice &device, const QImage &image);

} // namespace conversion
