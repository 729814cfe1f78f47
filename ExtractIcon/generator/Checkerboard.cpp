// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/generator/Checkerboard.h"

#include <QPainter>

namespace icons
{

void paintCheckerboard(QPainter &painter, const QRectF &rect, bool dark)
{
    constexpr int side = 8;
    QImage tile(2 * side, 2 * side, QImage::Format_RGB32);
    tile.fill(dark ? QColor(60, 60, 60) : QColor(255, 255, 255));
    QPainter squares(&tile);
    const QColor other = dark ? QColor(80, 80, 80) : QColor(225, 225, 225);
    squares.fillRect(0, 0, side, side, other);
    squares.fillRect(side, side, side, side, other);
    squares.end();
    painter.save();
    painter.setBrushOrigin(rect.topLeft());
    painter.fillRect(rect, QBrush(tile));
    painter.restore();
}

} // namespace icons
