// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/IconPicture.h"

#include <QColorSpace>

#include <algorithm>
#include <cmath>

namespace icons
{

namespace
{

using Pixels = std::vector<WeightedPixel>;

// More would make no difference in an icon of 256 pixels.
constexpr int maxKeptSide = 1024;

void add(WeightedPixel &to, const WeightedPixel &pixel, float weight)
{
    to.red += pixel.red * weight;
    to.green += pixel.green * weight;
    to.blue += pixel.blue * weight;
    to.alpha += pixel.alpha * weight;
}

// Box filter in one dimension: distributes `from` items over `to` receivers (to <= from) by overlap. Calls
// `give` with the index of the item, of the receiver, and the weight; the weights of a receiver add up to 1.
template <class Give>
void share(int from, int to, Give give)
{
    for (int i = 0; i < from; ++i) {
        const qint64 begin = qint64(i) * to;
        const qint64 end = begin + to;
        const int first = static_cast<int>(begin / from);
        const qint64 border = (qint64(first) + 1) * from;
        give(i, first, float(std::min(end, border) - begin) / float(from));
        if (end > border)
            give(i, first + 1, float(end - border) / float(from));
    }
}

// `row(y, line)` fills a line of `from` pixels; `to` must not exceed `from`.
template <class Row>
Pixels averaged(int from, int to, Row row)
{
    const auto width = static_cast<std::size_t>(to);
    Pixels result(width * width);
    Pixels line(static_cast<std::size_t>(from));
    Pixels narrow(width);
    int held = -1;
    share(from, to, [&](int y, int target, float weight) {
        if (y != held) {
            row(y, line.data());
            std::fill(narrow.begin(), narrow.end(), WeightedPixel{});
            share(from, to, [&](int x, int column, float part) {
                add(narrow[static_cast<std::size_t>(column)], line[static_cast<std::size_t>(x)], part);
            });
            held = y;
        }
        WeightedPixel *out = result.data() + static_cast<std::size_t>(target) * width;
        for (std::size_t x = 0; x < width; ++x)
            add(out[x], narrow[x], weight);
    });
    return result;
}

WeightedPixel weighted(QRgb pixel)
{
    const auto alpha = float(qAlpha(pixel));
    const float part = alpha / 255;
    return {float(qRed(pixel)) * part, float(qGreen(pixel)) * part, float(qBlue(pixel)) * part, alpha};
}

int byte(float value)
{
    return std::clamp(static_cast<int>(std::lround(value)), 0, 255);
}

// Sharpening strength for an icon size; none for sizes that keep enough detail.
float sharpening(int side)
{
    if (side <= 20)
        return 0.6F;
    if (side <= 32)
        return 0.4F;
    return side <= 48 ? 0.25F : 0.0F;
}

// The weighted 3x3 neighbourhood of a pixel, itself included; weights 1 2 1 in both directions.
WeightedPixel surroundings(const Pixels &pixels, int side, int x, int y)
{
    WeightedPixel sum;
    for (int v = std::max(y - 1, 0); v <= std::min(y + 1, side - 1); ++v) {
        for (int u = std::max(x - 1, 0); u <= std::min(x + 1, side - 1); ++u) {
            const auto weight = float((u == x ? 2 : 1) * (v == y ? 2 : 1));
            add(sum, pixels[static_cast<std::size_t>(v * side + u)], weight);
        }
    }
    return sum;
}

// Both sums are premultiplied, so transparent pixels have no influence.
QRgb plain(const WeightedPixel &own, const WeightedPixel &around, float amount)
{
    const int alpha = byte(own.alpha);
    if (alpha == 0 || own.alpha <= 0)
        return 0;
    const auto channel = [&](float value, float others) {
        const float colour = value * 255 / own.alpha;
        return byte(amount > 0 ? colour + amount * (colour - others * 255 / around.alpha) : colour);
    };
    return qRgba(channel(own.red, around.red), channel(own.green, around.green),
                 channel(own.blue, around.blue), alpha);
}

QImage painted(const Pixels &pixels, int side, float amount)
{
    QImage image(side, side, QImage::Format_ARGB32);
    for (int y = 0; y < side; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < side; ++x) {
            const WeightedPixel around = amount > 0 ? surroundings(pixels, side, x, y) : WeightedPixel{};
            line[x] = plain(pixels[static_cast<std::size_t>(y * side + x)], around, amount);
        }
    }
    return image;
}

// Only the part inside the square, converted to sRGB.
QImage prepared(const QImage &picture, const QRect &inside)
{
    QImage part = picture.copy(inside);
    if (part.colorSpace().isValid() && part.colorSpace() != QColorSpace(QColorSpace::SRgb))
        part.convertToColorSpace(QColorSpace::SRgb);
    return std::move(part).convertToFormat(QImage::Format_ARGB32);
}

} // namespace

IconPicture::IconPicture(const QImage &picture, const QRect &square)
{
    const QRect inside = square & picture.rect();
    if (inside.isEmpty())
        return;
    const QImage part = prepared(picture, inside);
    if (part.isNull())
        return;
    const int from = square.width();
    m_side = std::min(from, maxKeptSide);
    const int left = inside.left() - square.left();
    m_pixels = averaged(from, m_side, [&](int y, WeightedPixel *line) {
        const int row = y - (inside.top() - square.top());
        std::fill(line, line + from, WeightedPixel{});
        if (row < 0 || row >= part.height())
            return;
        const auto *pixels = reinterpret_cast<const QRgb *>(part.constScanLine(row));
        std::transform(pixels, pixels + part.width(), line + left, weighted);
    });
}

QImage IconPicture::made(int side, bool sharpen) const
{
    if (m_side == 0 || side < 1)
        return {};
    if (side > m_side) {
        const QImage own = painted(m_pixels, m_side, 0).convertToFormat(QImage::Format_ARGB32_Premultiplied);
        return own.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_ARGB32);
    }
    const Pixels pixels = averaged(m_side, side, [this](int y, WeightedPixel *line) {
        const auto first = m_pixels.begin() + qptrdiff(y) * m_side;
        std::copy(first, first + m_side, line);
    });
    return painted(pixels, side, sharpen && side < m_side ? sharpening(side) : 0);
}

} // namespace icons
