// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Blur.h"

#include "ConvertImage/engine/ImageFormat.h"

#include <array>
#include <cmath>

namespace conversion
{

namespace
{

// Fixed point: 16 fraction bits in the filter state and in its weight.
constexpr int fractionBits = 16;
constexpr int weightBits = 15;
constexpr int columnsAtOnce = 16; // 64 bytes, one cache line

using Memory = std::array<int, 4>;

int weightOf(int radius)
{
    const double weight = 1.0 - std::pow(2.0 / 255.0, 1.0 / (2.5 * radius));
    return std::max(1, static_cast<int>(std::lround(weight * (1 << weightBits))));
}

void remember(const uchar *pixel, Memory &memory)
{
    for (std::size_t channel = 0; channel < memory.size(); ++channel)
        memory[channel] = pixel[channel] << fractionBits;
}

void filter(uchar *pixel, Memory &memory, int weight)
{
    for (std::size_t channel = 0; channel < memory.size(); ++channel) {
        const int difference = (pixel[channel] << fractionBits) - memory[channel];
        memory[channel] += static_cast<int>((qint64(difference) * weight) >> weightBits);
        pixel[channel] = static_cast<uchar>((memory[channel] + (1 << (fractionBits - 1))) >> fractionBits);
    }
}

void filterRow(uchar *row, int width, int weight)
{
    Memory memory;
    remember(row, memory);
    for (int x = 1; x < width; ++x)
        filter(row + 4 * x, memory, weight);
    for (int x = width - 2; x >= 0; --x)
        filter(row + 4 * x, memory, weight);
}

// Processes a strip of columns at a time, so that whole cache lines are used.
void filterColumns(uchar *top, qsizetype stride, int columns, int height, int weight)
{
    std::array<Memory, columnsAtOnce> memory;
    const auto pass = [&](int y) {
        for (int x = 0; x < columns; ++x)
            filter(top + y * stride + 4 * x, memory[static_cast<std::size_t>(x)], weight);
    };
    for (int x = 0; x < columns; ++x)
        remember(top + 4 * x, memory[static_cast<std::size_t>(x)]);
    for (int y = 1; y < height; ++y)
        pass(y);
    for (int y = height - 2; y >= 0; --y)
        pass(y);
}

} // namespace

QImage blurred(const QImage &image, int radius)
{
    if (image.isNull() || radius <= 0)
        return image;
    const bool transparent = image.hasAlphaChannel();
    // Premultiplied, so that transparent pixels do not bleed their colour into neighbours.
    QImage result = transparent ? image.convertToFormat(QImage::Format_ARGB32_Premultiplied) : image;
    uchar *bits = result.bits();
    if (!bits)
        return {};
    const int weight = weightOf(radius);
    const int width = result.width();
    const int height = result.height();
    const qsizetype stride = result.bytesPerLine();
    forEachRowInParallel(height, width, [=](int y) { filterRow(bits + y * stride, width, weight); });
    const int strips = (width + columnsAtOnce - 1) / columnsAtOnce;
    forEachRowInParallel(strips, columnsAtOnce * height, [=](int strip) {
        const int first = strip * columnsAtOnce;
        filterColumns(bits + 4 * qsizetype(first), stride, std::min(columnsAtOnce, width - first), height,
                      weight);
    });
    return transparent ? result.convertToFormat(image.format()) : result;
}

} // namespace conversion
