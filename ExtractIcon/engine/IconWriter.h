// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>

#include <array>

namespace icons
{

// The sizes that Windows uses between 100 % and 400 % scaling, in pixels.
inline constexpr std::array<int, 10> usualSizes{16, 20, 24, 32, 40, 48, 64, 96, 128, 256};

// Images of this size and above are stored as PNG, supported since Vista; smaller ones as bitmaps, which
// every program can read.
inline constexpr int pngFrom = 256;

// An icon file of square images of 1 to 256 pixels, in the given order. Empty if there are none, one has
// another size, or the PNG encoder fails.
QByteArray makeIconFile(const QList<QImage> &images);

} // namespace icons
