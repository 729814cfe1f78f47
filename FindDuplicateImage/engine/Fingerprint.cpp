// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/Fingerprint.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace lookalikes
{

namespace
{

// Visits all 1600 positions in scattered order: it is coprime to 1600 and close to 1600 divided by the golden
// ratio.
constexpr int stride = 989;
static_assert(std::gcd(stride, fingerprintPositions) == 1);

quint8 meanOf(Fingerprint::Plane plane)
{
    const quint32 sum = std::accumulate(plane.begin(), plane.end(), quint32(0));
    return static_cast<quint8>(sum / fingerprintPositions);
}

// |later - earlier + difference|, capped at positionLimit, for values of at most `largest`. Branch-free byte
// arithmetic, so that compilers vectorise the loop over a block.
// The difference of the means is never negative here: if it were, `a` and `b` are swapped. Adding it to `a`
// saturates at 255, which does not change the result: in that case both the true and the computed distance
// exceed the cap, since `b` is at most 149.
template <int largest>
inline quint8 distance(quint8 a, quint8 b, quint8 difference)
{
    if constexpr (2 * largest > 255)
        a = std::min(a, static_cast<quint8>(255 - difference));
    const auto moved = static_cast<quint8>(a + difference);
    const quint8 larger = std::max(moved, b);
    const auto apart = static_cast<quint8>((larger - moved) + (larger - b)); // one of them is 0
    if constexpr (2 * largest > positionLimit)
        return std::min(apart, static_cast<quint8>(positionLimit));
    return apart;
}

struct Operands {
    const quint8 *a;
    const quint8 *b;
    quint8 difference;
};

Operands operands(const std::array<quint8, Fingerprint::blockSize> &earlier,
                  const std::array<quint8, Fingerprint::blockSize> &later, int difference)
{
    if (difference >= 0)
        return {later.data(), earlier.data(), static_cast<quint8>(difference)};
    return {earlier.data(), later.data(), static_cast<quint8>(-difference)};
}

} // namespace

Fingerprint::Fingerprint(Plane red, Plane green, Plane blue)
    : m_means{meanOf(red), meanOf(green), meanOf(blue)}
{
    std::size_t position = 0;
    for (Block &block : m_blocks) {
        for (std::size_t i = 0; i < blockSize; ++i) {
            block.red[i] = red[position];
            block.green[i] = green[position];
            block.blue[i] = blue[position];
            position = (position + stride) % fingerprintPositions;
        }
    }
}

MeanDifference operator-(const Fingerprint::Means &earlier, const Fingerprint::Means &later)
{
    return {earlier.red - later.red, earlier.green - later.green, earlier.blue - later.blue};
}

int differingPositions(const Fingerprint::Block &earlier, const Fingerprint::Block &later,
                       MeanDifference difference)
{
    const Operands red = operands(earlier.red, later.red, difference.red);
    const Operands green = operands(earlier.green, later.green, difference.green);
    const Operands blue = operands(earlier.blue, later.blue, difference.blue);
    // Two loops, since not every compiler vectorises a sum of bytes in the first one.
    std::array<quint8, Fingerprint::blockSize> differs;
    for (std::size_t i = 0; i < Fingerprint::blockSize; ++i) {
        // Three capped distances fit into a byte, and their sum reaches the limit exactly if the sum of the
        // uncapped ones does.
        const auto sum = static_cast<quint8>(distance<maxRed>(red.a[i], red.b[i], red.difference) +
                                             distance<maxGreen>(green.a[i], green.b[i], green.difference) +
                                             distance<maxBlue>(blue.a[i], blue.b[i], blue.difference));
        constexpr int toBit7 = 128 - positionLimit; // the top bit is set exactly from the limit on
        static_assert(2 * positionLimit + 2 * maxBlue + toBit7 <= 255);
        differs[i] = static_cast<quint8>(sum + toBit7) >> 7;
    }
    quint8 count = 0;
    for (const quint8 one : differs)
        count = static_cast<quint8>(count + one);
    return count;
}

int differingPositions(const Fingerprint &earlier, const Fingerprint &later, int enough)
{
    const MeanDifference difference = earlier.means() - later.means();
    int count = 0;
    for (std::size_t i = 0; i < Fingerprint::blockCount && count < enough; ++i)
        count += differingPositions(earlier.blocks()[i], later.blocks()[i], difference);
    return count;
}

} // namespace lookalikes
