// SPDX-License-Identifier: GPL-3.0-or-later

// The compact fingerprint, its byte-wide comparison and the grouping by it against plain computations on
// integers.

#include "FindDuplicateImage/engine/Fingerprint.h"
#include "FindDuplicateImage/engine/Reduction.h"
#include "FindDuplicateImage/engine/SimilarityGrouper.h"
#include "tests/FindDuplicateImage/engine/PlainFingerprint.h"

#include <QTest>

#include <algorithm>
#include <random>

using namespace lookalikes;
using tests::compact;
using tests::PlainFingerprint;

namespace
{

constexpr int allPositions = fingerprintPositions + 1; // counts to the end

// Values from a window of each channel's range, chosen anew for every fingerprint.
PlainFingerprint randomFingerprint(std::mt19937 &random)
{
    const auto fill = [&](std::vector<qint32> &plane, quint32 largest) {
        const quint32 low = random() % (largest + 1), high = low + random() % (largest - low + 1);
        for (int i = 0; i < fingerprintPositions; ++i)
            plane.push_back(static_cast<qint32>(low + random() % (high - low + 1)));
    };
    PlainFingerprint result;
    fill(result.red, maxRed);
    fill(result.green, maxGreen);
    fill(result.blue, maxBlue);
    result.computeMeans();
    return result;
}

// The grouping as it is stated: a picture joins the first earlier one that it is alike to, among those that
// were alike to none. Pictures go by their numbers.
struct PlainGrouping {
    std::vector<std::pair<int, PlainFingerprint>> candidates;
    QList<QList<int>> groups;

    void add(int number, const PlainFingerprint &fingerprint)
    {
        for (const auto &[first, candidate] : candidates) {
            if (!fingerprint.alike(candidate))
                continue;
            for (QList<int> &group : groups)
                if (group.first() == first)
                    return group.append(number);
            return groups.append({first, number});
        }
        candidates.emplace_back(number, fingerprint);
    }
};

// One of a few motifs, with so many positions changed that some copies are alike to the motif and not to each
// other.
PlainFingerprint variation(quint32 motif, std::mt19937 &random)
{
    std::mt19937 pattern(motif);
    PlainFingerprint result;
    for (int i = 0; i < 1600; ++i) {
        result.red.push_back(qint32(pattern() % 77));
        result.green.push_back(qint32(pattern() % 150));
        result.blue.push_back(qint32(pattern() % 30));
    }
    for (quint32 i = random() % 16; i > 0; --i) {
        const std::size_t position = random() % 1600;
        result.green[position] = result.green[position] > 70 ? 0 : 149;
    }
    result.computeMeans();
    return result;
}

QList<QList<int>> numbers(const std::vector<ImageGroup> &groups)
{
    QList<QList<int>> all;
    for (const ImageGroup &group : groups) {
        all.append(QList<int>());
        for (const ImageRecord &member : group.members)
            all.last().append(int(member.size));
    }
    return all;
}

ImageRecord picture(int width, int height, quint64 size, quint64 written, bool removed = false)
{
    ImageRecord image;
    image.size = size;
    image.width = width;
    image.height = height;
    image.lastWriteTime = written;
    image.checked = removed;
    return image;
}

} // namespace

class SimilarityTest : public QObject
{
    Q_OBJECT

private slots:
    void reductionEqualsPlainRule_data();
    void reductionEqualsPlainRule();
    void everyDistance();
    void comparisonEqualsPlainRule();
    void sizeLimits();
    void groupingEqualsPlainRule();
    void firstOfManyIsFound();
    void proposal();
};

void SimilarityTest::reductionEqualsPlainRule_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QImage::Format>("format");
    QTest::newRow("smallest") << QSize(40, 40) << QImage::Format_RGB32;
    QTest::newRow("photograph") << QSize(1333, 1000) << QImage::Format_RGB32;
    QTest::newRow("upright") << QSize(777, 1500) << QImage::Format_RGB888;
    QTest::newRow("square") << QSize(500, 500) << QImage::Format_ARGB32;
    QTest::newRow("grey") << QSize(300, 200) << QImage::Format_Grayscale8;
    QTest::newRow("palette") << QSize(200, 300) << QImage::Format_Indexed8;
    QTest::newRow("16 bits a channel") << QSize(301, 200) << QImage::Format_RGBA64;
    QTest::newRow("black and white") << QSize(333, 222) << QImage::Format_Mono;
    QTest::newRow("wide strip") << QSize(9000, 40) << QImage::Format_RGB32;
}

void SimilarityTest::reductionEqualsPlainRule()
{
    QFETCH(QSize, size);
    QFETCH(QImage::Format, format);
    std::mt19937 random(3);
    for (int round = 0; round < 5; ++round) {
        QImage image = tests::blockPicture(size, 30, random);
        if (QImage::toPixelFormat(format).alphaUsage() == QPixelFormat::UsesAlpha) {
            image = image.convertToFormat(QImage::Format_ARGB32);
            for (int x = 0; x < image.width() / 2; ++x)
                image.setPixel(x, x % image.height(), qRgba(200, 100, 50, x % 256));
        }
        image = image.convertToFormat(format);
        const auto reduced = tests::reduceImage(image);
        QVERIFY(reduced);
        const Fingerprint expected = compact(PlainFingerprint::of(image));
        QVERIFY(reduced->fingerprint == expected);
        // The resolution that it is meant for does not matter.
        image.setDevicePixelRatio(2);
        const auto again = tests::reduceImage(image);
        QVERIFY(again->fingerprint == expected);
        QCOMPARE(again->thumbnail.devicePixelRatio(), 1.0);
        QCOMPARE(std::min(reduced->thumbnail.width(), reduced->thumbnail.height()), 128);
    }
}

// The whole range of the widest channel: any two values at any difference of the means.
void SimilarityTest::everyDistance()
{
    Fingerprint::Block earlier{}, later{};
    for (int difference = -maxGreen; difference <= maxGreen; ++difference) {
        for (int a = 0; a <= maxGreen; ++a) {
            for (int first = 0; first <= maxGreen; first += Fingerprint::blockSize) {
                int expected = 0;
                for (int i = 0; i < Fingerprint::blockSize; ++i) {
                    const int b = std::min(first + i, maxGreen);
                    earlier.green[std::size_t(i)] = quint8(b);
                    later.green[std::size_t(i)] = quint8(a);
                    expected += std::abs(a - b + difference) >= 63 ? 1 : 0;
                }
                if (differingPositions(earlier, later, {0, difference, 0}) != expected)
                    QFAIL(qPrintable(
                        QStringLiteral("%1, %2 on, means differ by %3").arg(a).arg(first).arg(difference)));
            }
        }
    }
}

void SimilarityTest::comparisonEqualsPlainRule()
{
    std::mt19937 random(5);
    int alike = 0, unlike = 0;
    for (int round = 0; round < 3000; ++round) {
        const PlainFingerprint earlier = randomFingerprint(random);
        PlainFingerprint later = randomFingerprint(random);
        if (round % 3 != 0) {
            // A copy with a few other positions, brighter or darker: about as many as decide.
            const int shift = int(random() % 21) - 10;
            later = earlier;
            for (std::size_t i = 0; i < fingerprintPositions; ++i)
                later.green[i] = std::clamp(later.green[i] + shift, 0, maxGreen);
            for (int i = int(random() % 40); i > 0; --i) {
                const std::size_t position = random() % fingerprintPositions;
                later.green[position] = later.green[position] > 70 ? 0 : maxGreen;
            }
            later.computeMeans();
        }
        const Fingerprint e = compact(earlier), n = compact(later);
        QCOMPARE(differingPositions(e, n, allPositions), later.differingFrom(earlier));
        QCOMPARE(areAlike(e, n), later.alike(earlier));
        // Counting ends with the block that decides.
        QVERIFY(differingPositions(e, n) < differingLimit + Fingerprint::blockSize);
        ++(later.alike(earlier) ? alike : unlike);
    }
    QVERIFY(alike > 300 && unlike > 300);
}

void SimilarityTest::sizeLimits()
{
    const auto reduced = [](int width, int height) {
        QImage image(width, height, QImage::Format_Grayscale8);
        image.fill(200);
        return tests::reduceImage(image);
    };
    for (const int side : {39, 169'000}) { // the thumbnail would take 263 MiB
        QVERIFY(!reduced(side, 40));
        QVERIFY(!reduced(40, side));
    }
    QVERIFY(reduced(40, 40));
    const auto longest = reduced(40, 160'000);
    QVERIFY(longest);
    QCOMPARE(longest->fingerprint.means().green, weightedGreen(200));
    QVERIFY(!tests::reduceImage(QImage()));
}

void SimilarityTest::groupingEqualsPlainRule()
{
    int outsiders = 0; // alike to a later member of an earlier group, and yet in none or in another
    for (quint32 seed = 1; seed <= 6; ++seed) {
        std::mt19937 random(seed);
        SimilarityGrouper grouper;
        PlainGrouping plain;
        for (int i = 0; i < 150; ++i) {
            const PlainFingerprint fingerprint = variation(random() % 12, random);
            grouper.add(picture(1, 1, quint64(i), 1), compact(fingerprint));
            plain.add(i, fingerprint);
        }
        QCOMPARE(numbers(grouper.groups()), plain.groups);
        outsiders += int(plain.candidates.size()) - 12;
    }
    QVERIFY(outsiders > 6);
}

// The list keeps fingerprints in chunks; wherever one stands, the first that is alike is found, and no other.
void SimilarityTest::firstOfManyIsFound()
{
    std::mt19937 random(9);
    FingerprintList list;
    std::vector<Fingerprint> all;
    for (quint32 i = 0; i < 600; ++i) {
        all.push_back(compact(variation(i < 300 ? i : random() % 600, random)));
        list.add(all.back());
        QCOMPARE(list.size(), all.size());
        if (i % 64 != 0 && i % 256 > 1)
            continue;
        for (int search = 0; search < 60; ++search) {
            const Fingerprint later = compact(variation(random() % 700, random));
            std::optional<std::size_t> expected;
            for (std::size_t e = 0; e < all.size() && !expected; ++e)
                if (areAlike(all[e], later))
                    expected = e;
            QVERIFY(list.firstAlike(later) == expected);
        }
    }
}

void SimilarityTest::proposal()
{
    // The one that is proposed, -1 when none is.
    const auto kept = [](const std::vector<ImageRecord> &members) {
        const auto proposed = proposedToKeep(ImageGroup{members});
        return proposed ? int(*proposed) : -1;
    };
    // Most pixels. 3 * 2^31 of them are fewer than 2^31 in 32 bits.
    QCOMPARE(kept({picture(100, 100, 900, 1), picture(50, 300, 10, 9)}), 1);
    QCOMPARE(kept({picture(60'000, 30'000, 1, 1), picture(0x18000, 0x10000, 1, 1)}), 1);
    // Then the larger file, the oldest, the first.
    QCOMPARE(kept({picture(20, 10, 5, 1), picture(10, 20, 6, 9)}), 1);
    QCOMPARE(kept({picture(9, 9, 5, 7), picture(9, 9, 5, 3)}), 1);
    QCOMPARE(kept({picture(9, 9, 5, 7), picture(9, 9, 5, 7)}), 0);
    // None that was removed.
    QCOMPARE(kept({picture(9, 9, 5, 7, true), picture(8, 8, 5, 7)}), 1);
    QCOMPARE(kept({picture(9, 9, 5, 7, true), picture(8, 8, 5, 7, true)}), -1);
}

QTEST_APPLESS_MAIN(SimilarityTest)
#include "tst_similarity.moc"
