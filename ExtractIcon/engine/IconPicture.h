// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>

#include <vector>

namespace icons
{

// Red, green and blue times opacity, and opacity; 0 to 255 each.
struct WeightedPixel {
    float red = 0, green = 0, blue = 0, alpha = 0;
};

// A picture on its way to an icon: the chosen square, ready to be made in any size. Pixels are averaged over
// the area that they cover and weighted by their opacity, so the colour that a transparent pixel happens to
// have never shows at an edge. May be used from several threads at once.
class IconPicture
{
public:
    IconPicture() = default;
    // `square` may reach out of the picture; there it is transparent. Colours are taken to sRGB. Costs
    // milliseconds for each million pixels, and 16 MB at most.
    IconPicture(const QImage &picture, const QRect &square);

    // False for an empty square or picture.
    bool isValid() const { return m_side > 0; }

    // Format_ARGB32, `side` pixels wide and high. Small sizes of a larger picture are sharpened when wished:
    // their colours, not their outline.
    QImage made(int side, bool sharpen) const;

private:
    std::vector<WeightedPixel> m_pixels; // m_side rows of m_side
    int m_side = 0;
};

} // namespace icons
