// SPDX-License-Identifier: GPL-3.0-or-later
// Picture files that are not what they seem, through the loader and the plugins that are deployed: wrong
// suffix, cut off, damaged, and claims of more than there is.
#include "imaging/engine/ImageLoader.h"
#include "tests/formats/Pictures.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtEndian>

#include <array>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

constexpr quint64 mebibyte = 1 << 20;

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

} // namespace

class TestHostilePictures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
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
    void pngChunksAreHarmless();
    void readsInSeveralThreads();
};

void TestHostilePictures::initTestCase()
{
    tests::requireTestPrefix();
    QImageReader::setAllocationLimit(imaging::imageAllocationLimit);
}

void TestHostilePictures::contentDecides()
{
    QFETCH(QByteArray, format);
    const QImage image = picture({64, 48});
    const QByteArray content = encoded(image, format);
    const tests::TestFolder folder;
    for (const QString &name : {u"picture"_s, u"wrong.png"_s, u"wrong.jpg"_s, u"wrong.heic"_s,
                                u"odd.pspimage"_s, u"a b\u00e9\u4e2d.txt"_s}) {
        const auto loaded = imaging::readImage(folder.makeFile(name, content));
        QVERIFY2(loaded, qPrintable(name));
        VERIFY_NEAR(loaded->image, image, 4);
        QCOMPARE(loaded->format, format == "jpg" ? QByteArray("jpeg") : format);
    }
    // And the other way round: the right suffix with something else inside.
    const QString suffix = QString::fromLatin1(format);
    QVERIFY(!imaging::readImage(
        folder.makeFile(u"text."_s + suffix, "no picture at all, but long enough for headers")));
    QVERIFY(!imaging::readImage(folder.makeFile(u"empty."_s + suffix)));
}

void TestHostilePictures::survivesTruncation()
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
void TestHostilePictures::survivesDamage()
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
        QVERIFY(image.sizeInBytes() <= qint64(imaging::imageAllocationLimit) << 20);
    }
    QVERIFY(readable < variants);
}

void TestHostilePictures::refusesAboveTheLimit()
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
void TestHostilePictures::believesTheCodedSize()
{
    QFETCH(QByteArray, format);
    const QByteArray content = claiming(format, 64, picture({1024, 1024}));
    const QRegularExpression refusal(u"Coded picture of 1024 x 1024 pixels"_s);
    const AllocationLimit tight(3);
    QTest::ignoreMessage(QtWarningMsg, refusal);
    QVERIFY(decoded(content).isNull());
}

void TestHostilePictures::believesNoClaim_data()
{
    formatRows({"avif", "heic", "webp", "tiff", "png", "bmp", "jpg", "gif", "psd"});
}

void TestHostilePictures::believesNoClaim()
{
    QFETCH(QByteArray, format);
    const quint32 side = format == "webp" ? 16383 : 30000;
    const QByteArray content = claiming(format, side);
    QVERIFY(!content.isEmpty());
    const quint64 before = peakMemory();
    QVERIFY(before > 0);
    QVERIFY(decoded(content).isNull());
    QVERIFY2(peakMemory() < before + 64 * mebibyte,
             qPrintable(QString::number((peakMemory() - before) / mebibyte)));
    // The claim is what it is refused for.
    QVERIFY(format == "gif" || format == "psd" || !decoded(claiming(format, 16)).isNull());
}

QByteArray pngChunk(const QByteArray &name, const QByteArray &content, quint32 claimed)
{
    QByteArray chunk(4, '\0');
    put(chunk, 0, claimed, 4, true);
    chunk += name + content;
    chunk.resize(chunk.size() + 4);
    put(chunk, chunk.size() - 4, pngChecksum(name + content), 4, true);
    return chunk;
}

// Chunks beside the picture must cost neither memory that the file does not have nor minutes.
void TestHostilePictures::pngChunksAreHarmless()
{
    const QImage image = picture({32, 32});
    const QByteArray png = encoded(image, "png");
    const qsizetype end = png.size() - 12;
    const tests::TestFolder folder;

    const quint64 before = peakMemory();
    QByteArray huge = png;
    huge.insert(33, pngChunk("tEXt", "Comment", 0x7ffffff0));
    QVERIFY(!imaging::readImage(folder.makeFile(u"huge.png"_s, huge)));
    QVERIFY2(peakMemory() < before + 64 * mebibyte,
             qPrintable(QString::number((peakMemory() - before) / mebibyte)));

    QByteArray slow = png;
    const QByteArray exif = "II*" + QByteArray(1'000'000, '\0'); // a minute when each byte costs a question
    slow.insert(end, pngChunk("eXIf", exif, quint32(exif.size())));
    QElapsedTimer timer;
    timer.start();
    auto loaded = imaging::readImage(folder.makeFile(u"slow.png"_s, slow));
    QVERIFY(loaded);
    QVERIFY2(timer.elapsed() < 20'000, qPrintable(QString::number(timer.elapsed())));
    VERIFY_NEAR(loaded->image, image, 0.01);

    // What follows the end is no chunk.
    loaded = imaging::readImage(folder.makeFile(u"behind.png"_s, png + QByteArray(100, '\xff')));
    QVERIFY(loaded);
    VERIFY_NEAR(loaded->image, image, 0.01);
}

// Each thread its own reader, all plugins at once.
void TestHostilePictures::readsInSeveralThreads()
{
    std::vector<QByteArray> contents;
    std::vector<QImage> expected;
    for (const QByteArray format : {"avif", "heic", "jxl", "webp", "tiff", "png", "bmp", "jpg"}) {
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

QTEST_GUILESS_MAIN(TestHostilePictures)
#include "tst_hostile_pictures.moc"
