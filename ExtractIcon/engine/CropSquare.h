// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

// The square part of a picture that becomes an icon, in pixels of the picture.
namespace icons
{

inline constexpr int minCropSide = 8;

// The largest square in the middle of the picture.
QRect largestSquare(QSize picture);

// The smallest square around the whole picture: what lies outside of it is transparent in the icon.
QRect squareAround(QSize picture);

// The square moved, and kept in the picture as far as it fits.
QRect movedSquare(const QRect &square, QPoint by, QSize picture);

// A square drawn from `anchor` towards `to`: its side is the longer of both distances, as far as the picture
// has room. The anchor stays a corner, or the centre.
QRect drawnSquare(QPoint anchor, QPoint to, QSize picture, bool anchorIsCentre);

} // namespace icons
