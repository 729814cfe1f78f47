// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>

#include <array>

namespace icons
{

// The sizes that Windows asks for between 100 % and 400 %, in pixels.
inline constexpr std::array<int, 10> usualSizes{16, 20, 24, 32, 40, 48, 64, 96, 128, 256};

// From this side on an image is stored as PNG, which Windows reads since Vista; smaller ones are bitmaps,
// which every program reads.
inline constexpr int pngFrom = 256;

// An icon file of square images of 1 to 256 pixels, in the order given. Empty when there is none, one has
// another size, or the PNG encoder fails.
QByteArray makeIconFile(const QList<QImage> &images);

} // namespace icons
