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
    fill(result.red, largestRed);
    fill(result.green, largestGreen);
    fill(result.blue, largestBlue);
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

QImage photo()
{
    QImage image(1200, 900, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x * 200 / 1200, y * 200 / 900, (x + y) * 200 / 2100));
    return image;
}

QImage brighter(QImage image, int by)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            image.setPixel(x, y, qRgb(qRed(pixel) + by, qGreen(pixel) + by, qBlue(pixel) + by));
        }
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
    void pictures_data();
    void pictures();
    void meansAreTruncated();
    void sizeLimits_data();
    void sizeLimits();
    void resolutionDoesNotMatter();
};

void FingerprintTest::reductionEqualsPlainRule_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QImage::Format>("format");
    QTest::newRow("smallest") << QSize(40, 40) << QImage::Format_RGB32;
    QTest::newRow("photograph") << QSize(1333, 1000) << QImage::Format_RGB32;
    QTest::newRow("upright") << QSize(777, 1500) << QImage::Format_RGB888;
    QTest::newRow("square") << QSize(500, 500) << QImage::Format_ARGB32;
    QTest::newRow("premultiplied") << QSize(300, 200) << QImage::Format_ARGB32_Premultiplied;
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
        const auto reduced = reduceImage(image);
        QVERIFY(reduced);
        QVERIFY(reduced->fingerprint == compact(PlainFingerprint::of(image)));
        QCOMPARE(std::min(reduced->thumbnail.width(), reduced->thumbnail.height()), 128);
    }
}

// The whole range of the widest channel: any two values at any difference of the means.
void FingerprintTest::everyDistance()
{
    Fingerprint::Block earlier{}, later{};
    for (int difference = -largestGreen; difference <= largestGreen; ++difference) {
        for (int a = 0; a <= largestGreen; ++a) {
            for (int first = 0; first <= largestGreen; first += Fingerprint::blockSize) {
                int expected = 0;
                for (int i = 0; i < Fingerprint::blockSize; ++i) {
                    const int b = std::min(first + i, largestGreen);
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
                later.green[i] = std::clamp(later.green[i] + shift, 0, largestGreen);
            for (int i = int(random() % 40); i > 0; --i) {
                const std::size_t position = random() % fingerprintPositions;
                later.green[position] = later.green[position] > 70 ? 0 : largestGreen;
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
    const Fingerprint black = reduceImage(filled(100, 100, Qt::black))->fingerprint;
    QImage half = filled(400, 400, Qt::black);
    for (int y = 0; y < 400; ++y)
        for (int x = 0; x < 200; ++x)
            half.setPixel(x, y, qRgb(255, 255, 255));
    const Fingerprint other = reduceImage(half)->fingerprint;
    QCOMPARE(differingPositions(black, other, allPositions), 1600);
    QCOMPARE(differingPositions(black, other), Fingerprint::blockSize); // one look
}

void FingerprintTest::pictures_data()
{
    QTest::addColumn<QImage>("first");
    QTest::addColumn<QImage>("second");
    QTest::addColumn<int>("differing");
    const QImage black = filled(400, 400, Qt::black);
    QTest::newRow("14 blocks") << black << whiteBlocks(14) << 14;
    QTest::newRow("15 blocks") << black << whiteBlocks(15) << 15;
    QTest::newRow("brighter") << photo() << brighter(photo(), 40) << 0;
    QTest::newRow("another size") << photo()
                                  << photo().scaled(777, 583, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                  << 0;
    // Without their means, plain surfaces are one.
    QTest::newRow("white and black") << filled(100, 100, Qt::white) << filled(100, 100, Qt::black) << 0;
}

void FingerprintTest::pictures()
{
    QFETCH(QImage, first);
    QFETCH(QImage, second);
    QFETCH(int, differing);
    const auto a = reduceImage(first), b = reduceImage(second);
    QVERIFY(a && b);
    QCOMPARE(differingPositions(a->fingerprint, b->fingerprint, allPositions), differing);
    QCOMPARE(areAlike(a->fingerprint, b->fingerprint), differing < 15);
}

void FingerprintTest::meansAreTruncated()
{
    const auto reduced = reduceImage(whiteBlocks(15));
    QVERIFY(reduced->fingerprint.means() == (Fingerprint::Means{0, 1, 0}));
    QVERIFY(reduceImage(filled(50, 50, Qt::white))->fingerprint.means() == (Fingerprint::Means{76, 149, 29}));
}

void FingerprintTest::sizeLimits_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("compared");
    QTest::newRow("too narrow") << QSize(39, 500) << false;
    QTest::newRow("too low") << QSize(500, 39) << false;
    QTest::newRow("just enough") << QSize(40, 40) << true;
    // Thumbnails of 249 and 263 MiB.
    QTest::newRow("long") << QSize(40, 160'000) << true;
    QTest::newRow("too long") << QSize(40, 169'000) << false;
    QTest::newRow("too wide") << QSize(169'000, 40) << false;
}

void FingerprintTest::sizeLimits()
{
    QFETCH(QSize, size);
    QFETCH(bool, compared);
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(200);
    const auto reduced = reduceImage(image);
    QCOMPARE(reduced.has_value(), compared);
    QVERIFY(!reduced || reduced->fingerprint.means().green == weightedGreen(200));
    QVERIFY(!reduceImage(QImage()));
}

void FingerprintTest::resolutionDoesNotMatter()
{
    QImage image = photo();
    const Fingerprint expected = reduceImage(image)->fingerprint;
    image.setDevicePixelRatio(2);
    const auto reduced = reduceImage(image);
    QVERIFY(reduced->fingerprint == expected);
    QCOMPARE(reduced->thumbnail.devicePixelRatio(), 1.0);
}

QTEST_APPLESS_MAIN(FingerprintTest)
#include "tst_fingerprint.moc"
