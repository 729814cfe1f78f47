// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QPainter;
class QRectF;

namespace icons
{

// The pattern behind transparent areas of an image.
void paintCheckerboard(QPainter &painter, const QRectF &rect, bool dark);

} // namespace icons
