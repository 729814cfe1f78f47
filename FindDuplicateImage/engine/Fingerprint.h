// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/engine/Examination.h"

#include <QtGlobal>

#include <array>
#include <cstddef>
#include <span>

namespace lookalikes
{

inline constexpr int fingerprintSide = imaging::sampleSide;
inline constexpr int fingerprintPositions = fingerprintSide * fingerprintSide;

// Two images are similar if fewer than this number of positions differ.
inline constexpr int differingLimit = 15;
// A position differs if its mean-centred channel differences add up to at least this value.
inline constexpr int positionLimit = 63;

// A colour channel's value times its luma coefficient: multiplied in double precision, converted to float,
// truncated.
constexpr quint8 weighted(int value, double coefficient)
{
    return static_cast<quint8>(static_cast<float>(value * coefficient));
}
constexpr quint8 weightedRed(int value)
{
    return weighted(value, 0.299);
}
constexpr quint8 weightedGreen(int value)
{
    return weighted(value, 0.587);
}
constexpr quint8 weightedBlue(int value)
{
    return weighted(value, 0.114);
}

inline constexpr int maxRed = weightedRed(255);
inline constexpr int maxGreen = weightedGreen(255);
inline constexpr int maxBlue = weightedBlue(255);
static_assert(maxRed == 76 && maxGreen == 149 && maxBlue == 29);

// The three weighted colour planes of an image scaled to 40 by 40, and the mean of each. Every value fits a
// byte.
// The positions are stored in scattered order, so that the first few dozen are spread over the whole image.
// The order has no effect on which positions differ, but dissimilar images are distinguished sooner if the
// comparison does not start with two skies.
class Fingerprint
{
public:
    // Number of positions stored together, one channel after the other.
    static constexpr int blockSize = 64;
    static constexpr int blockCount = fingerprintPositions / blockSize;
    static_assert(blockCount * blockSize == fingerprintPositions);

    struct Block {
        std::array<quint8, blockSize> red;
        std::array<quint8, blockSize> green;
        std::array<quint8, blockSize> blue;
        bool operator==(const Block &) const = default;
    };
    // Of each plane; truncated.
    struct Means {
        quint8 red;
        quint8 green;
        quint8 blue;
        bool operator==(const Means &) const = default;
    };

    using Plane = std::span<const quint8, fingerprintPositions>;

    // The planes row by row; values must not exceed maxRed, maxGreen and maxBlue.
    Fingerprint(Plane red, Plane green, Plane blue);

    const std::array<Block, blockCount> &blocks() const { return m_blocks; }
    const Means &means() const { return m_means; }

    bool operator==(const Fingerprint &) const = default;

private:
    std::array<Block, blockCount> m_blocks;
    Means m_means;
};

// Differences of the means: `earlier` minus `later`.
struct MeanDifference {
    int red;
    int green;
    int blue;
};
MeanDifference operator-(const Fingerprint::Means &earlier, const Fingerprint::Means &later);

// The number of differing positions within one block.
int differingPositions(const Fingerprint::Block &earlier, const Fingerprint::Block &later,
                       MeanDifference difference);

// The number of differing positions; stops counting at `enough` and then returns some number of at least
// `enough`.
int differingPositions(const Fingerprint &earlier, const Fingerprint &later, int enough = differingLimit);

inline bool areAlike(const Fingerprint &earlier, const Fingerprint &later)
{
    return differingPositions(earlier, later) < differingLimit;
}

} // namespace lookalikes
