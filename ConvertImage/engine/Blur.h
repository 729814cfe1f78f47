// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace conversion
{

// The blur of QGraphicsBlurEffect at that radius: an exponential filter, forwards and backwards along rows
// and columns, of which what is 2.5 radii away keeps two parts in 255. Unlike the effect it needs no scene
// and no interface thread, keeps the size, and takes what lies outside of the picture to be like its edge, so
// that edges do not darken. `image` is RGB32 or ARGB32, and so is the result. Any thread.
QImage blurred(const QImage &image, int radius);

} // namespace conversion
