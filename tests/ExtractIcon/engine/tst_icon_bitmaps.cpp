// SPDX-License-Identifier: GPL-3.0-or-later
// Bitmaps that are made byte by byte, with what they must show; those of other programs are in
// tst_icon_other_readers.
#include "ExtractIcon/engine/BitmapDecoder.h"
#include "ExtractIcon/engine/Bytes.h"
#include "ExtractIcon/engine/IconImage.h"

#include <QBuffer>
#include <QTest>

using namespace icons;

namespace
{

// Two pixels wide, two high: rows bottom-up, each padded to four bytes.
struct Parts {
    int bits = 32;
    int height = 4; // pixels and mask
    quint32 compression = 0;
    quint32 used = 0;
    QByteArray table;                   // masks and colours
    QByteArray pixels;                  // rows as stored
    QByteArray mask = QByteArray(8, 0); // rows as stored

    QByteArray bytes() const
    {
        QByteArray made;
        append<quint32>(made, 40);
        append<qint32>(made, 2);
        append<qint32>(made, height);
        append<quint16>(made, 1);
        append<quint16>(made, static_cast<quint16>(bits));
        append<quint32>(made, compression);
        made.append(12, '\0');
        append<quint32>(made, used);
        append<quint32>(made, 0);
        return made + table + pixels + mask;
    }
};

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

constexpr auto blackWhiteRed = "00000000 ffffff00 0000ff00";

} // namespace

class tst_icon_bitmaps : public QObject
{
    Q_OBJECT

private slots:
    void decodes_data();
    void decodes();
    void refuses_data();
    void refuses();
    void whatIsCutShort_data();
    void whatIsCutShort();
    void sizeAndDepthOfAnEntry();
};

void tst_icon_bitmaps::decodes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<QRgb>>("expected"); // from the top, left to right
    const auto row = [](const char *name, const Parts &parts, QList<QRgb> expected) {
        QTest::newRow(name) << parts.bytes() << expected;
    };
    constexpr QRgb black = 0xff000000, white = 0xffffffff, red = 0xffff0000, blue = 0xff0000ff, none = 0;
    row("1 bit", {1, 4, 0, 0, hex("00000000 ffffff00"), hex("40000000 80000000")},
        {white, black, black, white});
    row("4 bits, high nibble first, colours that are not there",
        {4, 4, 0, 3, hex(blackWhiteRed), hex("1f000000 02000000")}, {black, red, white, black});
    row("8 bits, three colours", {8, 4, 0, 3, hex(blackWhiteRed), hex("01000000 02010000")},
        {red, white, white, black});
    row("16 bits", {16, 4, 0, 0, {}, hex("007c1f00 ffff0000")}, {white, black, red, blue});
    row("16 bits with masks", {16, 4, 3, 0, hex("00f80000 e0070000 1f000000"), hex("00f81f00 ffff0000")},
        {white, black, red, blue});
    row("24 bits", {24, 4, 0, 0, {}, hex("0000ff ff0000 0000 ffffff 000000 0000")},
        {white, black, red, blue});
    row("24 bits behind a colour table",
        {24, 4, 0, 1, hex("12345678"), hex("0000ff ff0000 0000 ffffff 000000 0000")},
        {white, black, red, blue});
    row("top-down, the mask too",
        {24, -4, 0, 0, {}, hex("0000ff ff0000 0000 ffffff 000000 0000"), hex("40000000 80000000")},
        {red, none, none, black});
    row("mask", {24, 4, 0, 0, {}, hex("0000ff ff0000 0000 ffffff 000000 0000"), hex("40000000 80000000")},
        {none, black, red, none});
    row("32 bits, own alpha, the mask does not count",
        {32, 4, 0, 0, {}, hex("0000ff80 00000000 ffffffff 010203ff"), hex("ffffffff ffffffff")},
        {white, 0xff030201, 0x80ff0000, none});
    row("32 bits, no alpha at all: the mask counts",
        {32, 4, 0, 0, {}, hex("0000ff00 ff000000 ffffff00 00000000"), hex("40000000 00000000")},
        {white, black, red, none});
    row("32 bits, red and blue changed over by masks",
        {32, 4, 3, 0, hex("ff000000 00ff0000 0000ff00"), hex("ff0000ff 0000ffff ffffffff 000000ff")},
        {white, black, red, blue});
    row("32 bits, alpha, the mask left out",
        {32, 4, 0, 0, {}, hex("0000ffff ff0000ff ffffffff 000000ff"), {}}, {white, black, red, blue});
}

void tst_icon_bitmaps::decodes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QList<QRgb>, expected);
    const std::optional<DecodedBitmap> decoded = decodeBitmap(bytes);
    QVERIFY(decoded);
    QCOMPARE(decoded->image.size(), QSize(2, 2));
    QCOMPARE(decoded->bits, number<quint16>(bytes, 14));
    QList<QRgb> pixels;
    for (int i = 0; i < 4; ++i)
        pixels.append(decoded->image.pixel(i % 2, i / 2));
    QCOMPARE(pixels, expected);
}

void tst_icon_bitmaps::refuses_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<quint32>("value");
    QTest::newRow("core header") << 0 << 12U;
    QTest::newRow("header larger than any") << 0 << 0x7fffffffU;
    QTest::newRow("no width") << 4 << 0U;
    QTest::newRow("negative width") << 4 << 0xffffffffU;
    QTest::newRow("wide") << 4 << 0x7fffffffU;
    QTest::newRow("no height") << 8 << 1U;
    QTest::newRow("height without a positive") << 8 << 0x80000000U;
    QTest::newRow("2 bits") << 12 << 0x00020001U;
    QTest::newRow("run lengths") << 16 << 1U;
    QTest::newRow("masks for 8 bits") << 16 << 3U;
    QTest::newRow("more colours than 8 bits can name") << 32 << 257U;
    QTest::newRow("colours beyond the end") << 32 << 200U;
}

void tst_icon_bitmaps::refuses()
{
    QFETCH(int, at);
    QFETCH(quint32, value);
    QByteArray bytes = Parts{8, 4, 0, 3, hex(blackWhiteRed), hex("01000000 02010000")}.bytes();
    QVERIFY(decodeBitmap(bytes));
    qToLittleEndian(value, bytes.data() + at);
    QVERIFY(!decodeBitmap(bytes));
}

void tst_icon_bitmaps::whatIsCutShort_data()
{
    decodes_data();
}

// The sanitizers of the native build see a read behind the end of an exact allocation.
void tst_icon_bitmaps::whatIsCutShort()
{
    QFETCH(QByteArray, bytes);
    const BitmapHeader header = *bitmapHeader(bytes);
    const qint64 pixelsEnd = header.pixels + 2 * ((2 * header.bits + 31) / 32 * 4);
    for (qsizetype size = 0; size < bytes.size(); ++size) {
        const auto exact = std::make_unique<char[]>(static_cast<std::size_t>(size));
        std::copy_n(bytes.constData(), size, exact.get());
        const bool decoded = decodeBitmap(QByteArrayView(exact.get(), size)).has_value();
        const bool maskLeftOut = size == pixelsEnd && header.alphaMask != 0;
        QVERIFY(!decoded || maskLeftOut);
    }
}

void tst_icon_bitmaps::sizeAndDepthOfAnEntry()
{
    const QByteArray bitmap = Parts{24, 4, 0, 0, {}, QByteArray(16, 0)}.bytes();
    QByteArray png;
    QBuffer buffer(&png);
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    QVERIFY(QImage(300, 200, QImage::Format_ARGB32).save(&buffer, "PNG"));
    const auto told = [](const IconImage &image) { return sizeAndDepth(image.facts); };

    DirectoryEntry entry;
    QCOMPARE(told(decodeImage(bitmap, entry)), QStringLiteral("2x2, 24 bits"));
    QCOMPARE(told(decodeImage(png, entry)), QStringLiteral("300x200, 32 bits"));
    entry.width = 16;
    entry.height = 17;
    entry.bits = 4;
    QCOMPARE(told(decodeImage(bitmap, entry)), QStringLiteral("16x17, 4 bits"));
    QCOMPARE(told(decodeImage(png, entry)), QStringLiteral("16x17, 32 bits"));
    QVERIFY(decodeImage(bitmap.chopped(1), entry).image.isNull());

    // A size that nobody would want is refused by its header, before anything is allocated.
    qToBigEndian<quint32>(60000, png.data() + 16);
    QVERIFY(decodeImage(png, entry).image.isNull());
}

QTEST_GUILESS_MAIN(tst_icon_bitmaps)
#include "tst_icon_bitmaps.moc"
