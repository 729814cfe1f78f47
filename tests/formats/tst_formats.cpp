// SPDX-License-Identifier: GPL-3.0-or-later
// Every image format of the suite through the plugins that are deployed: written, read, and read when the
// file is not what it seems.
#include "core/ImageLoader.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QBuffer>
#include <QColorSpace>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <memory>
#include <thread>
#include <vector>

namespace
{

using namespace Qt::StringLiterals;
using Transformation = QImageIOHandler::Transformation;

// No symmetry, smooth areas and hard edges.
QImage picture(QSize size, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(40 + 180 * x / size.width(), 60 + 160 * y / size.height(), 90));
    }
    QPainter painter(&image);
    painter.fillRect(0, 0, size.width() / 3, size.height() / 4, Qt::red);
    painter.setBrush(Qt::yellow);
    painter.drawEllipse(QRect(size.width() / 2, size.height() / 2, size.width() / 3, size.height() / 3));
    painter.end();
    return image.convertToFormat(format);
}

QImage transparentPicture(QSize size)
{
    QImage image = picture(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QRgb colour = image.pixel(x, y);
            image.setPixel(x, y,
                           qRgba(qRed(colour), qGreen(colour), qBlue(colour), 80 + 175 * x / size.width()));
        }
    }
    return image;
}

struct Difference {
    double mean = INFINITY; // of a channel, 0 to 255
    int worst = 255;
};

Difference difference(const QImage &first, const QImage &second)
{
    if (first.size() != second.size() || first.isNull())
        return {};
    const QImage a = first.convertToFormat(QImage::Format_ARGB32);
    const QImage b = second.convertToFormat(QImage::Format_ARGB32);
    qint64 sum = 0;
    int worst = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto *p = a.constScanLine(y);
        const auto *q = b.constScanLine(y);
        for (int i = 0; i < 4 * a.width(); ++i) {
            sum += std::abs(p[i] - q[i]);
            worst = std::max(worst, std::abs(p[i] - q[i]));
        }
    }
    return {double(sum) / (4.0 * a.width() * a.height()), worst};
}

QByteArray encoded(const QImage &image, const QByteArray &format, int quality = -1,
                   Transformation transformation = QImageIOHandler::TransformationNone)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    writer.setTransformation(transformation);
    return writer.write(image) ? buffer.data() : QByteArray();
}

QImage decoded(QByteArray content)
{
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    return reader.read();
}

class AllocationLimit
{
public:
    explicit AllocationLimit(int mebibytes) : m_before(QImageReader::allocationLimit())
    {
        QImageReader::setAllocationLimit(mebibytes);
    }
    ~AllocationLimit() { QImageReader::setAllocationLimit(m_before); }
    AllocationLimit(const AllocationLimit &) = delete;
    AllocationLimit &operator=(const AllocationLimit &) = delete;

private:
    int m_before;
};

quint64 peakMemory()
{
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof counters;
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return std::max<quint64>(counters.PeakPagefileUsage, counters.PeakWorkingSetSize);
}

void put(QByteArray &bytes, qsizetype at, quint32 value, int length, bool bigEndian)
{
    for (int i = 0; i < length; ++i) {
        const int shift = 8 * (bigEndian ? length - 1 - i : i);
        bytes[at + i] = static_cast<char>(value >> shift);
    }
}

quint32 pngChecksum(const QByteArray &bytes)
{
    quint32 remainder = 0xffffffff;
    for (const char byte : bytes) {
        remainder ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit)
            remainder = remainder >> 1 ^ (remainder & 1 ? 0xedb88320 : 0);
    }
    return ~remainder;
}

// The same file, but its header claims `side` by `side` pixels.
QByteArray claiming(const QByteArray &format, quint32 side, const QImage &image = picture({16, 16}))
{
    QByteArray bytes = format == "psd"   ? QByteArray("8BPS\0\1\0\0\0\0\0\0\0\3", 14) + QByteArray(4096, '\0')
                       : format == "gif" ? QByteArray("GIF89a\0\0\0\0\0\0\0,\0\0\0\0\0\0\0\0\0\2\2D\1\0;", 28)
                                         : encoded(image, format, 100);
    if (format == "bmp") {
        put(bytes, 18, side, 4, false);
        put(bytes, 22, side, 4, false);
    } else if (format == "gif") {
        for (const qsizetype at : {6, 8, 18, 20})
            put(bytes, at, side, 2, false);
    } else if (format == "png") {
        put(bytes, 16, side, 4, true);
        put(bytes, 20, side, 4, true);
        put(bytes, 29, pngChecksum(bytes.mid(12, 17)), 4, true);
    } else if (format == "jpg") {
        const qsizetype frame = bytes.indexOf("\xff\xc0");
        put(bytes, frame + 5, side, 2, true);
        put(bytes, frame + 7, side, 2, true);
    } else if (format == "tiff") {
        const auto directory = qFromLittleEndian<quint32>(bytes.constData() + 4);
        for (qsizetype entry = directory + 2; entry + 12 < bytes.size(); entry += 12) {
            const auto tag = qFromLittleEndian<quint16>(bytes.constData() + entry);
            if (tag == 256 || tag == 257) {
                put(bytes, entry + 2, 4, 2, false);
                put(bytes, entry + 8, side, 4, false);
            }
        }
    } else if (format == "webp") {
        put(bytes, bytes.indexOf("VP8L") + 9, (side - 1) | (side - 1) << 14, 4, false);
    } else if (format == "psd") {
        put(bytes, 14, side, 4, true);
        put(bytes, 18, side, 4, true);
        put(bytes, 22, 8, 2, true);
        put(bytes, 24, 3, 2, true);
    } else {
        for (qsizetype at = bytes.indexOf("ispe"); at >= 0; at = bytes.indexOf("ispe", at + 1)) {
            put(bytes, at + 8, side, 4, true);
            put(bytes, at + 12, side, 4, true);
        }
    }
    return bytes;
}

// What the plugins write, by the suffix of the file.
const QList<QByteArray> written = {"avif", "heic", "heif", "jxl", "webp", "tiff", "tif", "png", "bmp", "jpg"};

void formatRows(std::initializer_list<const char *> formats)
{
    QTest::addColumn<QByteArray>("format");
    for (const char *format : formats)
        QTest::newRow(format) << QByteArray(format);
}

} // namespace

#define VERIFY_NEAR(actual, expected, mean_)                                                                 \
    do {                                                                                                     \
        const double mean = difference(actual, expected).mean;                                               \
        QVERIFY2(mean < (mean_), qPrintable(QString::number(mean)));                                         \
    } while (false)

class TestFormats : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void isSupported_data();
    void isSupported();
    void roundTrip_data();
    void roundTrip();
    void keepsEveryBit_data();
    void keepsEveryBit();
    void keepsTransparency_data() { formatRows({"avif", "heic", "jxl", "webp", "tiff", "png"}); }
    void keepsTransparency();
    void keepsDepth_data() { formatRows({"avif", "jxl", "tiff", "png"}); }
    void keepsDepth();
    void keepsColourSpace_data() { formatRows({"avif", "heic", "jxl", "webp", "tiff", "png", "jpg"}); }
    void keepsColourSpace();
    void qualityMatters_data() { formatRows({"avif", "heic", "jxl", "webp", "jpg"}); }
    void qualityMatters();
    void isUpright_data();
    void isUpright();
    void contentDecides_data() { formatRows({"avif", "heic", "jxl", "webp", "tiff", "png", "bmp", "jpg"}); }
    void contentDecides();
    void survivesTruncation_data() { contentDecides_data(); }
    void survivesTruncation();
    void survivesDamage_data() { contentDecides_data(); }
    void survivesDamage();
    void refusesAboveTheLimit_data() { contentDecides_data(); }
    void refusesAboveTheLimit();
    void believesTheCodedSize_data() { formatRows({"avif", "heic"}); }
    void believesTheCodedSize();
    void believesNoClaim_data();
    void believesNoClaim();
    void readsInSeveralThreads();
};

void TestFormats::initTestCase()
{
    tests::requireTestPrefix();
    QImageReader::setAllocationLimit(core::imageAllocationLimit);
}

void TestFormats::isSupported_data()
{
    formatRows(
        {"avif", "bmp", "gif", "heif", "heic", "jpg", "jpeg", "jxl", "png", "psd", "tif", "tiff", "webp"});
}

void TestFormats::isSupported()
{
    QFETCH(QByteArray, format);
    QVERIFY(QImageReader::supportedImageFormats().contains(format));
    QCOMPARE(QImageWriter::supportedImageFormats().contains(format), format != "gif" && format != "psd");
}

// Through the file and its suffix, as the converter writes; odd sizes, since colour is often kept for two by
// two pixels.
void TestFormats::roundTrip_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QSize>("size");
    for (const QByteArray &format : written) {
        for (const QSize size : {QSize(160, 120), QSize(63, 41), QSize(1, 1)})
            QTest::addRow("%s %dx%d", format.constData(), size.width(), size.height()) << format << size;
    }
}

void TestFormats::roundTrip()
{
    QFETCH(QByteArray, format);
    QFETCH(QSize, size);
    const tests::TestFolder folder;
    const QString path = folder.path(u"picture."_s + QString::fromLatin1(format));
    const QImage image = picture(size);
    QImageWriter writer(path);
    QVERIFY2(writer.write(image), qPrintable(writer.errorString()));
    const auto loaded = core::readImage(path);
    QVERIFY(loaded);
    QCOMPARE(loaded->image.size(), size);
    VERIFY_NEAR(loaded->image, image, 4);
    QVERIFY(!loaded->image.hasAlphaChannel());
}

void TestFormats::keepsEveryBit_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QImage>("image");
    for (const char *format : {"avif", "heic", "jxl", "webp", "tiff", "png"}) {
        QTest::addRow("%s", format) << QByteArray(format) << picture({61, 47});
        // libtiff multiplies by the transparency, which rounds.
        if (qstrcmp(format, "tiff") != 0)
            QTest::addRow("%s transparent", format) << QByteArray(format) << transparentPicture({61, 47});
    }
}

void TestFormats::keepsEveryBit()
{
    QFETCH(QByteArray, format);
    QFETCH(QImage, image);
    const QImage back = decoded(encoded(image, format, 100));
    QCOMPARE(difference(back, image).worst, 0);
}

void TestFormats::keepsTransparency()
{
    QFETCH(QByteArray, format);
    const QImage image = transparentPicture({96, 64});
    const QImage back = decoded(encoded(image, format));
    QVERIFY(back.hasAlphaChannel());
    VERIFY_NEAR(back, image, 5);
}

// 512 steps over the width: eight bits a channel hold half of them.
void TestFormats::keepsDepth()
{
    QFETCH(QByteArray, format);
    QImage image(512, 16, QImage::Format_RGBX64);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y,
                                QColor::fromRgba64(quint16(x * 128), quint16(x * 128), quint16(x * 128)));
    }
    const QImage back = decoded(encoded(image, format, 100));
    QCOMPARE(back.size(), image.size());
    QVERIFY(back.depth() > 32);
    int worst = 0;
    for (int x = 0; x < image.width(); ++x)
        worst = std::max(worst, std::abs(back.pixelColor(x, 8).rgba64().green() - x * 128));
    QVERIFY2(worst <= 65535 / 1023 / 2 + 1, qPrintable(QString::number(worst)));
}

void TestFormats::keepsColourSpace()
{
    QFETCH(QByteArray, format);
    QImage image = picture({96, 64});
    image.setColorSpace(QColorSpace(QColorSpace::DisplayP3));
    const QImage back = decoded(encoded(image, format));
    QVERIFY(back.colorSpace().isValid());
    const QColorSpace sRgb(QColorSpace::SRgb);
    VERIFY_NEAR(back.convertedToColorSpace(sRgb), image.convertedToColorSpace(sRgb), 4);
    // The decoder of JPEG XL has converted the colours itself.
    const QColorSpace expected(format == "jxl" ? QColorSpace::SRgb : QColorSpace::DisplayP3);
    QCOMPARE(back.colorSpace().primaries(), expected.primaries());
}

void TestFormats::qualityMatters()
{
    QFETCH(QByteArray, format);
    const QImage image = picture({256, 256});
    const QByteArray low = encoded(image, format, 20);
    const QByteArray high = encoded(image, format, 90);
    QVERIFY(!low.isEmpty());
    QVERIFY(low.size() < high.size());
    QVERIFY(difference(decoded(high), image).mean < difference(decoded(low), image).mean);
}

void TestFormats::isUpright_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<int>("transformation");
    for (const char *format : {"avif", "heic", "tiff", "jpg"}) {
        for (int transformation = 0; transformation < 8; ++transformation)
            QTest::addRow("%s %d", format, transformation) << QByteArray(format) << transformation;
    }
}

// What a viewer has to do is stored beside the pixels; the loader does it.
void TestFormats::isUpright()
{
    QFETCH(QByteArray, format);
    QFETCH(int, transformation);
    const QImage image = picture({96, 64});
    QImage expected = image;
    if (transformation & QImageIOHandler::TransformationMirror)
        expected = expected.mirrored(true, false);
    if (transformation & QImageIOHandler::TransformationFlip)
        expected = expected.mirrored(false, true);
    if (transformation & QImageIOHandler::TransformationRotate90)
        expected = expected.transformed(QTransform().rotate(90));
    const QByteArray content = encoded(image, format, 90, static_cast<Transformation>(transformation));
    const tests::TestFolder folder;
    QImage loaded;
    QVERIFY(core::loadImage(folder.makeFile(u"turned"_s, content), loaded));
    VERIFY_NEAR(loaded, expected, 3);
    // The size is known before the pixels are, and is that of the stored picture or of the upright one.
    QBuffer buffer;
    buffer.setData(content);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    QCOMPARE(turned ? reader.size().transposed() : reader.size(), expected.size());
}

void TestFormats::contentDecides()
{
    QFETCH(QByteArray, format);
    const QImage image = picture({64, 48});
    const QByteArray content = encoded(image, format);
    const tests::TestFolder folder;
    for (const QString &name : {u"picture"_s, u"wrong.png"_s, u"wrong.jpg"_s, u"wrong.heic"_s,
                                u"odd.pspimage"_s, u"a b\u00e9\u4e2d.txt"_s}) {
        const auto loaded = core::readImage(folder.makeFile(name, content));
        QVERIFY2(loaded, qPrintable(name));
        VERIFY_NEAR(loaded->image, image, 4);
        QCOMPARE(loaded->format, format == "jpg" ? QByteArray("jpeg") : format);
    }
    // And the other way round: the right suffix with something else inside.
    const QString suffix = QString::fromLatin1(format);
    QVERIFY(!core::readImage(
        folder.makeFile(u"text."_s + suffix, "no picture at all, but long enough for headers")));
    QVERIFY(!core::readImage(folder.makeFile(u"empty."_s + suffix)));
}

void TestFormats::survivesTruncation()
{
    QFETCH(QByteArray, format);
    const QImage image = picture({64, 48});
    const QByteArray whole = encoded(image, format);
    QVERIFY(!decoded(whole).isNull());
    const bool halfIsNothing = format == "avif" || format == "heic" || format == "jxl" || format == "webp";
    for (qsizetype length = 0; length < whole.size(); length += std::max<qsizetype>(1, whole.size() / 97)) {
        const QImage rest = decoded(whole.first(length));
        QVERIFY(rest.isNull() || rest.size() == image.size());
        if (halfIsNothing && length <= whole.size() / 2)
            QVERIFY(rest.isNull());
    }
}

// Bytes changed at random, the same each run.
void TestFormats::survivesDamage()
{
    QFETCH(QByteArray, format);
    constexpr int variants = 400;
    const QByteArray whole = encoded(picture({48, 40}), format);
    QRandomGenerator random(20);
    int readable = 0;
    for (int i = 0; i < variants; ++i) {
        QByteArray damaged = whole;
        const int changes = 1 + i % 8;
        // Headers decide what is allocated: half of the changes go there.
        for (int change = 0; change < changes; ++change) {
            const qsizetype end = change % 2 ? std::min<qsizetype>(damaged.size(), 600) : damaged.size();
            damaged[random.bounded(end)] = static_cast<char>(random.bounded(256));
        }
        const QImage image = decoded(damaged);
        readable += !image.isNull();
        QVERIFY(image.sizeInBytes() <= qint64(core::imageAllocationLimit) << 20);
    }
    QVERIFY(readable < variants);
}

void TestFormats::refusesAboveTheLimit()
{
    QFETCH(QByteArray, format);
    for (const int quality : {-1, 100}) {
        const QByteArray content = encoded(picture({1024, 1024}), format, quality);
        {
            const AllocationLimit tight(3);
            QVERIFY(decoded(content).isNull());
        }
        // As large as is allowed: what decoders take beside the picture must not refuse it.
        const AllocationLimit enough(4);
        QVERIFY(!decoded(content).isNull());
    }
}

// The container says small, the coded picture is large.
void TestFormats::believesTheCodedSize()
{
    QFETCH(QByteArray, format);
    const QByteArray content = claiming(format, 64, picture({1024, 1024}));
    const QRegularExpression refusal(u"Coded picture of 1024 x 1024 pixels"_s);
    const AllocationLimit tight(3);
    QTest::ignoreMessage(QtWarningMsg, refusal);
    QVERIFY(decoded(content).isNull());
}

void TestFormats::believesNoClaim_data()
{
    formatRows({"avif", "heic", "webp", "tiff", "png", "bmp", "jpg", "gif", "psd"});
}

void TestFormats::believesNoClaim()
{
    QFETCH(QByteArray, format);
    const quint32 side = format == "webp" ? 16383 : 30000;
    const QByteArray content = claiming(format, side);
    QVERIFY(!content.isEmpty());
    const quint64 before = peakMemory();
    QVERIFY(before > 0);
    QVERIFY(decoded(content).isNull());
    constexpr quint64 mebibyte = 1 << 20;
    QVERIFY2(peakMemory() < before + 64 * mebibyte,
             qPrintable(QString::number((peakMemory() - before) / mebibyte)));
    // The claim is what it is refused for.
    QVERIFY(format == "gif" || format == "psd" || !decoded(claiming(format, 16)).isNull());
}

// Each thread its own reader, all plugins at once.
void TestFormats::readsInSeveralThreads()
{
    std::vector<QByteArray> contents;
    std::vector<QImage> expected;
    for (const QByteArray &format : written) {
        contents.push_back(encoded(picture({80, 60}), format));
        expected.push_back(decoded(contents.back()));
        QVERIFY(!expected.back().isNull());
    }
    constexpr size_t threadCount = 4;
    std::array<int, threadCount> wrong = {};
    std::vector<std::thread> threads;
    for (size_t thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&, thread] {
            for (size_t round = 0; round < 5 * contents.size(); ++round) {
                const size_t i = (round + thread) % contents.size();
                wrong[thread] += decoded(contents[i]) != expected[i];
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    for (const int count : wrong)
        QCOMPARE(count, 0);
}

QTEST_GUILESS_MAIN(TestFormats)
#include "tst_formats.moc"
