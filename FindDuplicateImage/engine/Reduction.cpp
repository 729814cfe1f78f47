// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/Reduction.h"

#include "core/ImageLoader.h"

#include <algorithm>
#include <array>
#include <utility>

namespace lookalikes
{

namespace
{

template <quint8 (*weigh)(int)>
constexpr std::array<quint8, 256> weightTable()
{
    std::array<quint8, 256> table{};
    for (int value = 0; value < 256; ++value)
        table[static_cast<std::size_t>(value)] = weigh(value);
    return table;
}

constexpr std::array<quint8, 256> redWeights = weightTable<weightedRed>();
constexpr std::array<quint8, 256> greenWeights = weightTable<weightedGreen>();
constexpr std::array<quint8, 256> blueWeights = weightTable<weightedBlue>();

// A strip of 40 by 100,000 pixels is a small picture with a thumbnail forty times its size.
bool thumbnailFits(const QImage &image)
{
    const qint64 shorter = std::min(image.width(), image.height());
    const qint64 longer = std::max(image.width(), image.height());
    const qint64 bytesPerPixel = std::max(image.depth(), 32) / 8;
    const qint64 bytes = thumbnailSide * (longer * thumbnailSide / shorter) * bytesPerPixel;
    return bytes <= qint64(core::imageAllocationLimit) << 20;
}

} // namespace

QImage thumbnailOf(QImage image)
{
    if (image.width() < fingerprintSide || image.height() < fingerprintSide || !thumbnailFits(image))
        return {};
    // Qt takes "@2x" in a file's name for a statement about its resolution.
    image.setDevicePixelRatio(1);
    return image.width() > image.height() ? image.scaledToHeight(thumbnailSide, Qt::FastTransformation)
                                          : image.scaledToWidth(thumbnailSide, Qt::FastTransformation);
}

QImage fingerprintPixels(const QImage &thumbnail)
{
    return thumbnail.scaled(fingerprintSide, fingerprintSide, Qt::IgnoreAspectRatio, Qt::FastTransformation)
        .convertToFormat(QImage::Format_RGB32);
}

Fingerprint fingerprintOf(const QImage &reduced)
{
    Q_ASSERT(reduced.size() == QSize(fingerprintSide, fingerprintSide) &&
             reduced.format() == QImage::Format_RGB32);
    std::array<quint8, fingerprintPositions> red;
    std::array<quint8, fingerprintPositions> green;
    std::array<quint8, fingerprintPositions> blue;
    std::size_t position = 0;
    for (int y = 0; y < fingerprintSide; ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(reduced.constScanLine(y));
        for (int x = 0; x < fingerprintSide; ++x, ++position) {
            red[position] = redWeights[static_cast<std::size_t>(qRed(row[x]))];
            green[position] = greenWeights[static_cast<std::size_t>(qGreen(row[x]))];
            blue[position] = blueWeights[static_cast<std::size_t>(qBlue(row[x]))];
        }
    }
    return Fingerprint(red, green, blue);
}

std::optional<ReducedImage> reduceImage(QImage image)
{
    QImage thumbnail = thumbnailOf(std::move(image));
    if (thumbnail.isNull())
        return std::nullopt;
    return ReducedImage{fingerprintOf(fingerprintPixels(thumbnail)), std::move(thumbnail)};
}

} // namespace lookalikes
