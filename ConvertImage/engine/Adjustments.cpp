// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Adjustments.h"

#include "ConvertImage/engine/Blur.h"
#include "ConvertImage/engine/ImageFormat.h"

#include <QColorSpace>

#include <algorithm>
#include <cmath>

namespace conversion
{

namespace
{

using ChannelTable = std::array<double, 256>;

double contrastFactor(int contrast)
{
    const double amount = contrast;
    double divisor = (259.0 - amount) * 255.0;
    if (divisor == 0.0)
        divisor = (258.0 - amount) * 255.0;
    return (amount + 255.0) * 259.0 / divisor;
}

double withGamma(double value, double gamma)
{
    if (gamma == 1.0)
        return value;
    // pow() of a negative base would be NaN.
    return std::pow(std::max(value, 0.0) / 255.0, 1.0 / gamma) * 255.0;
}

// Contrast, brightness and gamma depend on one channel only, so a table of 256 values is enough.
ChannelTable channelTable(const Adjustments &wanted)
{
    const double factor = contrastFactor(wanted.contrast);
    const double gamma = (wanted.gamma + 100.0) / 100.0;
    ChannelTable table;
    for (std::size_t i = 0; i < table.size(); ++i) {
        auto value = static_cast<double>(i);
        if (wanted.contrast != 0)
            value = (value - 128.0) * factor + 128.0;
        if (wanted.brightness != 0)
            value += wanted.brightness;
        if (gamma != 0.0)
            value = withGamma(value, gamma);
        table[i] = value;
    }
    return table;
}

double inverted(double value, double below)
{
    return value < below ? 255.0 - value : value;
}

quint8 toByte(double value)
{
    return static_cast<quint8>(std::clamp(value, 0.0, 255.0));
}

// The complete result of an independent channel, for each of its values.
void adjustRowByTable(QRgb *row, int width, const std::array<quint8, 256> &table)
{
    for (int x = 0; x < width; ++x) {
        const QRgb pixel = row[x];
        row[x] = (pixel & 0xff000000u) | QRgb(table[(pixel >> 16) & 0xff]) << 16 |
                 QRgb(table[(pixel >> 8) & 0xff]) << 8 | table[pixel & 0xff];
    }
}

// One vector register of doubles, using the compiler's vector extension. Each lane rounds exactly as scalar
// code does.
#if defined(__GNUC__)
using Lanes = double __attribute__((vector_size(16)));
using LaneMask = long long __attribute__((vector_size(16)));
constexpr int laneCount = 2;

Lanes select(LaneMask mask, Lanes yes, Lanes no)
{
    return reinterpret_cast<Lanes>((mask & reinterpret_cast<LaneMask>(yes)) |
                                   (~mask & reinterpret_cast<LaneMask>(no)));
}

Lanes finished(Lanes value, Lanes below)
{
    const Lanes nothing{0.0, 0.0};
    const Lanes full{255.0, 255.0};
    value = select(value < below, full - value, value);
    value = select(value < nothing, nothing, value);
    return select(value > full, full, value);
}

// The new red is used for green, and both for blue.
void adjustPairWithSepia(QRgb *pixels, const ChannelTable &table, Lanes below)
{
    const auto channel = [&](int shift) {
        return Lanes{table[(pixels[0] >> shift) & 0xff], table[(pixels[1] >> shift) & 0xff]};
    };
    Lanes red = channel(16);
    Lanes green = channel(8);
    Lanes blue = channel(0);
    red = 0.393 * red + 0.769 * green + 0.189 * blue;
    green = 0.686 * green + 0.349 * red + 0.168 * blue;
    blue = 0.534 * green + 0.272 * red + 0.131 * blue;
    red = finished(red, below);
    green = finished(green, below);
    blue = finished(blue, below);
    for (int lane = 0; lane < laneCount; ++lane) {
        pixels[lane] = (pixels[lane] & 0xff000000u) | QRgb(static_cast<int>(red[lane])) << 16 |
                       QRgb(static_cast<int>(green[lane])) << 8 | QRgb(static_cast<int>(blue[lane]));
    }
}
#endif

void adjustPixelWithSepia(QRgb &pixel, const ChannelTable &table, double below)
{
    double red = table[(pixel >> 16) & 0xff];
    double green = table[(pixel >> 8) & 0xff];
    double blue = table[pixel & 0xff];
    red = 0.393 * red + 0.769 * green + 0.189 * blue;
    green = 0.686 * green + 0.349 * red + 0.168 * blue;
    blue = 0.534 * green + 0.272 * red + 0.131 * blue;
    pixel = (pixel & 0xff000000u) | QRgb(toByte(inverted(red, below))) << 16 |
            QRgb(toByte(inverted(green, below))) << 8 | toByte(inverted(blue, below));
}

void adjustRowWithSepia(QRgb *row, int width, const ChannelTable &table, double below)
{
    int x = 0;
#if defined(__GNUC__)
    const Lanes limit{below, below};
    for (; x + laneCount <= width; x += laneCount)
        adjustPairWithSepia(row + x, table, limit);
#endif
    for (; x < width; ++x)
        adjustPixelWithSepia(row[x], table, below);
}

void adjustColours(QImage &image, const Adjustments &wanted)
{
    const ChannelTable table = channelTable(wanted);
    // 0 means no limit; a negative value is a valid limit.
    const double below = wanted.invertBelow != 0 ? wanted.invertBelow : -HUGE_VAL;
    std::array<quint8, 256> bytes;
    std::ranges::transform(table, bytes.begin(),
                           [below](double value) { return toByte(inverted(value, below)); });
    uchar *bits = image.bits(); // detached, so not shared with another image
    if (!bits)
        return;
    forEachRowInParallel(image.height(), image.width(), [&, bits](int y) {
        auto *row = reinterpret_cast<QRgb *>(bits + y * image.bytesPerLine());
        if (wanted.sepia)
            adjustRowWithSepia(row, image.width(), table, below);
        else
            adjustRowByTable(row, image.width(), bytes);
    });
}

} // namespace

QImage adjusted(const QImage &image, const Adjustments &adjustments)
{
    if (image.isNull() || !adjustments.changeColours())
        return image;
    const bool transparent = image.hasAlphaChannel();
    QImage result = image.convertToFormat(transparent ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (result.isNull())
        return {};
    Adjustments colours = adjustments;
    colours.blurRadius = 0;
    if (colours.changeColours()) {
        adjustColours(result, colours);
    }
    if (adjustments.blurRadius > 0)
        result = blurred(result, adjustments.blurRadius);
    keepFacts(image, result);
    return result;
}

QImage grey(const QImage &image)
{
    const QImage colours = inSrgb(image);
    QImage result = colours.convertToFormat(QImage::Format_Grayscale8);
    if (isTransparentAnywhere(colours)) {
        QImage transparent = colours.convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < transparent.height(); ++y) {
            auto *pixel = reinterpret_cast<QRgb *>(transparent.scanLine(y));
            const uchar *value = result.constScanLine(y);
            for (int x = 0; x < transparent.width(); ++x)
                pixel[x] = qRgba(value[x], value[x], value[x], qAlpha(pixel[x]));
        }
        result = transparent;
    }
    keepFacts(image, result);
    // The values are sRGB luminance now and need no profile.
    result.setColorSpace({});
    return result;
}

} // namespace conversion
