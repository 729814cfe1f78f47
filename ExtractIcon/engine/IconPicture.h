// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>

#include <vector>

namespace icons
{

// Premultiplied red, green and blue, and alpha; 0 to 255 each.
struct WeightedPixel {
    float red = 0, green = 0, blue = 0, alpha = 0;
};

// The square part of an image, prepared for icons of any size. Pixels are area-averaged and weighted by their
// alpha, so the hidden colour of transparent pixels never shows at an edge. Safe to use from several threads
// at once.
class IconPicture
{
public:
    IconPicture() = default;
    // `square` may exceed the image; the area outside is transparent. Colours are converted to sRGB. Takes
    // milliseconds per million pixels, and up to 16 MB.
    IconPicture(const QImage &picture, const QRect &square);

    // False for an empty square or image.
    bool isValid() const { return m_side > 0; }

    // Format_ARGB32, `side` pixels wide and high. With `sharpen`, small sizes of a larger image are
    // sharpened: their colours, not their outline.
    QImage made(int side, bool sharpen) const;

private:
    std::vector<WeightedPixel> m_pixels; // m_side rows of m_side
    int m_side = 0;
};

} // namespace icons
