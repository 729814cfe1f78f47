// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/CropSquare.h"

#include <algorithm>
#include <cstdlib>

namespace icons
{

namespace
{

// Clamps a span of `length` at `at` to an image side; centres it if it is longer.
int kept(int at, int length, int side)
{
    return length > side ? (side - length) / 2 : std::clamp(at, 0, side - length);
}

} // namespace

QRect largestSquare(QSize picture)
{
    const int side = std::min(picture.width(), picture.height());
    return {(picture.width() - side) / 2, (picture.height() - side) / 2, side, side};
}

QRect squareAround(QSize picture)
{
    const int side = std::max(picture.width(), picture.height());
    return {(picture.width() - side) / 2, (picture.height() - side) / 2, side, side};
}

QRect movedSquare(const QRect &square, QPoint by, QSize picture)
{
    const QPoint wanted = square.topLeft() + by;
    return {QPoint(kept(wanted.x(), square.width(), picture.width()),
                   kept(wanted.y(), square.height(), picture.height())),
            square.size()};
}

QRect drawnSquare(QPoint anchor, QPoint to, QSize picture, bool anchorIsCentre)
{
    anchor = {std::clamp(anchor.x(), 0, picture.width()), std::clamp(anchor.y(), 0, picture.height())};
    const int dx = to.x() - anchor.x();
    const int dy = to.y() - anchor.y();
    const int longer = std::max(std::abs(dx), std::abs(dy));
    if (anchorIsCentre) {
        const int room =
            std::min({anchor.x(), anchor.y(), picture.width() - anchor.x(), picture.height() - anchor.y()});
        const int half = std::min(std::max(longer, minCropSide / 2), room);
        return {anchor.x() - half, anchor.y() - half, 2 * half, 2 * half};
    }
    const int roomX = dx < 0 ? anchor.x() : picture.width() - anchor.x();
    const int roomY = dy < 0 ? anchor.y() : picture.height() - anchor.y();
    const int side = std::min({std::max(longer, minCropSide), roomX, roomY});
    return {dx < 0 ? anchor.x() - side : anchor.x(), dy < 0 ? anchor.y() - side : anchor.y(), side, side};
}

} // namespace icons
