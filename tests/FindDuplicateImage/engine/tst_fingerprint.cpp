// SPDX-License-Identifier: GPL-3.0-or-later

// The compact fingerprint and its byte-wide comparison against a plain computation on integers.

#include "FindDuplicateImage/engine/Fingerprint.h"
#include "FindDuplicateImage/engine/Reduction.h"
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

// White on black: one pixel of the fingerprint for each block.
QImage whiteBlocks(int count)
{
    QImage image(400, 400, QImage::Format_RGB32);
    image.fill(Qt::black);
    for (int i = 0; i < count; ++i)
        for (int y = 0; y < 10; ++y)
            for (int x = 0; x < 10; ++x)
                image.setPixel(20 * i + x, 100 + y, qRgb(255, 255, 255));
    return image;
}

QImage filled(int width, int height, QColor colour)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

} // namespace

class FingerprintTest : public QObject
{
    Q_OBJECT

private slots:
    void reductionEqualsPlainRule_data();
    void reductionEqualsPlainRule();
    void everyDistance();
    void comparisonEqualsPlainRule();
    void countingEndsEarly();
    void pictures();
    void sizeLimits();
};

void FingerprintTest::reductionEqualsPlainRule_data()
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

void FingerprintTest::reductionEqualsPlainRule()
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
void FingerprintTest::everyDistance()
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

void FingerprintTest::comparisonEqualsPlainRule()
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
        ++(later.alike(earlier) ? alike : unlike);
    }
    QVERIFY(alike > 300 && unlike > 300);
}

void FingerprintTest::countingEndsEarly()
{
    const Fingerprint black = tests::reduceImage(filled(100, 100, Qt::black))->fingerprint;
    QImage half = filled(400, 400, Qt::black);
    std::fill_n(reinterpret_cast<QRgb *>(half.bits()), 400 * 200, qRgb(255, 255, 255));
    const Fingerprint other = tests::reduceImage(half)->fingerprint;
    QCOMPARE(differingPositions(black, other, allPositions), 1600);
    QCOMPARE(differingPositions(black, other), Fingerprint::blockSize); // one look
}

void FingerprintTest::pictures()
{
    const Fingerprint black = tests::reduceImage(filled(400, 400, Qt::black))->fingerprint;
    for (const int blocks : {14, 15}) {
        const Fingerprint other = tests::reduceImage(whiteBlocks(blocks))->fingerprint;
        QCOMPARE(differingPositions(black, other, allPositions), blocks);
        QCOMPARE(areAlike(black, other), blocks < 15);
    }
    // Without their means, plain surfaces are one.
    QVERIFY(areAlike(black, tests::reduceImage(filled(100, 100, Qt::white))->fingerprint));
}

void FingerprintTest::sizeLimits()
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

QTEST_APPLESS_MAIN(FingerprintTest)
#include "tst_fingerprint.moc"
