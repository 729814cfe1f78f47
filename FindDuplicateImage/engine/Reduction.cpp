// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/Reduction.h"

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

} // namespace

Fingerprint fingerprintOf(const QImage &samples)
{
    Q_ASSERT(samples.size() == QSize(fingerprintSide, fingerprintSide) &&
             samples.format() == QImage::Format_RGB32);
    std::array<quint8, fingerprintPositions> red;
    std::array<quint8, fingerprintPositions> green;
    std::array<quint8, fingerprintPositions> blue;
    std::size_t position = 0;
    for (int y = 0; y < fingerprintSide; ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(samples.constScanLine(y));
        for (int x = 0; x < fingerprintSide; ++x, ++position) {
            red[position] = redWeights[static_cast<std::size_t>(qRed(row[x]))];
            green[position] = greenWeights[static_cast<std::size_t>(qGreen(row[x]))];
            blue[position] = blueWeights[static_cast<std::size_t>(qBlue(row[x]))];
        }
    }
    return Fingerprint(red, green, blue);
}

ExaminedImage examinedImage(imaging::Examination examination)
{
    return {examination.width, examination.height, std::move(examination.format),
            fingerprintOf(examination.samples), std::move(examination.thumbnail)};
}

} // namespace lookalikes
