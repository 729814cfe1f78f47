// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>
#include <QImage>

namespace conversion
{

// Writes a single GIF89 frame through GIFLIB: not interlaced, without transparency. A colour table of 1 to
// 256 colours is kept and padded with black to a power of two; other images are reduced to 256 colours with
// dithering. Returns an empty string on success, otherwise an error for the log.
QString writeGif(QIODevice &device, const QImage &image);

} // namespace conversion
