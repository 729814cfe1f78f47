// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

// The square part of an image that becomes an icon, in image pixels.
namespace icons
{

inline constexpr int minCropSide = 8;

// The largest square centred in the image.
QRect largestSquare(QSize picture);

// The smallest square around the whole image; the area outside of the image is transparent in the icon.
QRect squareAround(QSize picture);

// Moves the square, kept inside the image as far as it fits.
QRect movedSquare(const QRect &square, QPoint by, QSize picture);

// A square dragged from `anchor` to `to`: its side is the longer distance, limited by the image. The anchor
// remains a corner, or the centre.
QRect drawnSquare(QPoint anchor, QPoint to, QSize picture, bool anchorIsCentre);

} // namespace icons
