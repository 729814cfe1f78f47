// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace conversion
{

// The blur of QGraphicsBlurEffect at that radius: an exponential filter, applied forwards and backwards along
// rows and columns, whose response falls to 2/255 at 2.5 radii. Unlike the effect it needs no scene and no
// GUI thread, keeps the size, and extends the edge pixels outwards, so that edges do not darken. `image` must
// be RGB32 or ARGB32; the result has the same format. Any thread.
QImage blurred(const QImage &image, int radius);

} // namespace conversion
