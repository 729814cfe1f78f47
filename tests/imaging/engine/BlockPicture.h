// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>

#include <random>

namespace tests
{

// A picture of `across` by `across` random blocks.
inline QImage blockPicture(QSize size, int across, std::mt19937 &random)
{
    QImage small(across, across, QImage::Format_RGB32);
    for (int y = 0; y < across; ++y)
        for (int x = 0; x < across; ++x)
            small.setPixel(x, y, static_cast<QRgb>(random()) | 0xff000000U);
    return small.scaled(size);
}

} // namespace tests
