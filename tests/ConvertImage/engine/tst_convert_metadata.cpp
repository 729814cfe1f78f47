// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Targets.h"
#include "ConvertImage/engine/metadata/ExifEditor.h"
#include "ConvertImage/engine/metadata/JpegMetadata.h"
#include "ConvertImage/engine/metadata/MetadataBytes.h"
#include "tests/ConvertImage/engine/Written.h"

#include <QBuffer>
#include <QImageWriter>
#include <QTest>
#include <QtEndian>

using namespace conversion;

namespace
{

Metadata metadataIn(QByteArray file)
{
    QBuffer buffer(&file);
    buffer.open(QIODevice::ReadOnly);
    return readMetadata(buffer);
}

// Orientation 6, a position with one entry, the size 4000 x 3000, and a thumbnail of eight bytes.
QByteArray cameraExif()
{
    return QByteArray::fromHex("49492a0008000000"
                               "0300"
                               "120103000100000006000000"
                               "698704000100000032000000"
                               "258804000100000050000000"
                               "62000000"
                               "0200"
                               "02a0040001000000a00f0000"
                               "03a0040001000000b80b0000"
                               "00000000"
                               "0100"
                               "010002000200000053000000"
                               "00000000"
                               "0200"
                               "010204000100000080000000"
                               "020204000100000008000000"
                               "00000000"
                               "5448554d424e4c21");
}

QByteArray xmp(const QByteArray &attributes, const QByteArray &elements = {})
{
    return "<?xpacket begin=\"\xef\xbb\xbf\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?><x:xmpmeta "
           "xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
           "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description rdf:about=\"\" "
           "xmlns:tiff=\"http://ns.adobe.com/tiff/1.0/\" xmlns:exif=\"http://ns.adobe.com/exif/1.0/\" "
           "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" " +
           attributes + ">" + elements + "</rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end=\"w\"?>";
}

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

QByteArray box(const QByteArray &type, const QByteArray &content)
{
    return bigBytes(quint32(content.size() + 8)) + type + content;
}

} // namespace

class TestConvertMetadata : public QObject
{
    Q_OBJECT

private slots:
    void metadataTravels_data();
    void metadataTravels();
    void itemsKeepTheirPlaces();
    void tiffOfEitherOrder();
    void placeIsCleared();
    void longMetadataOfJpeg();
    void lostMetadataIsTold_data();
    void lostMetadataIsTold();
    void cutOffJpeg();
    void damagedExif();
};

void TestConvertMetadata::metadataTravels_data()
{
    QTest::addColumn<Target>("target");
    for (const Target target : {Target::Avif, Target::Heic, Target::Heif, Target::Jpg, Target::Jxl,
                                Target::Png, Target::Tiff, Target::Webp})
        QTest::newRow(factsOf(target).name) << target;
}

void TestConvertMetadata::metadataTravels()
{
    QFETCH(Target, target);
    if (!QImageWriter::supportedImageFormats().contains(writerFormat(target)))
        QSKIP("built without this format");
    const Metadata camera{cameraExif(), xmp("tiff:Orientation=\"6\"")};
    QCOMPARE(exifOrientation(camera.exif), 6);
    const QByteArray file = written(colourful(64, 32), {.target = target}, camera);
    QCOMPARE(QImage::fromData(file).size(), QSize(64, 32)); // upright: not turned again
    const Metadata found = metadataIn(file);
    QCOMPARE(exifOrientation(found.exif), 1);
    QVERIFY(found.exif.contains(QByteArray::fromHex("02a0040001000000") + QByteArray::fromHex("40000000")));
    QVERIFY(found.exif.contains(QByteArray::fromHex("010002000200000053000000"))); // the position
    QVERIFY(!found.exif.contains("THUMBNL"));
    QVERIFY2(found.xmp.contains("tiff:Orientation=\"1\""), found.xmp);
    const Metadata none =
        metadataIn(written(colourful(64, 32), {.target = target, .keepMetadata = false}, camera));
    QVERIFY(!none.exif.contains(QByteArray::fromHex("010002000200000053000000")));
    QVERIFY(none.xmp.isEmpty());
}

// Made by hand: these formats' own writers are not everywhere.
void TestConvertMetadata::itemsKeepTheirPlaces()
{
    const auto file = [&](const QByteArray &offset) {
        const QByteArray info = box("infe", hex("02000000 0001 0000") + QByteArray("av01\0", 5));
        const QByteArray meta =
            box("meta", hex("00000000") + box("pitm", hex("00000000 0001")) +
                            box("iinf", hex("00000000 0001") + info) +
                            box("iloc", hex("00000000 4400 0001 0001 0000 0001") + offset + hex("00000007")));
        return QByteArray(box("ftyp", "avif") + meta + box("mdat", "PICTURE"));
    };
    const auto at = static_cast<char>(file(hex("00000000")).indexOf("PICTURE"));
    const QByteArray plain = file(hex("000000") + at);
    const Metadata camera{cameraExif(), "<x/>"};
    const QByteArray once = withMetadata(plain, Target::Avif, camera).file;
    QCOMPARE(metadataIn(once), camera);
    const auto moved = static_cast<char>(once.indexOf("PICTURE"));
    QVERIFY(moved != at);
    QVERIFY(once.contains(hex("0001 0000 0000 0001 000000") + moved + hex("00000007")));
    // What is there already is replaced.
    const QByteArray twice = withMetadata(once, Target::Heic, {cameraExif(), "<y/>"}).file;
    QCOMPARE(metadataIn(twice).xmp, QByteArray("<y/>"));
    QCOMPARE(twice.count("infe"), 3);
    const WithMetadata damaged = withMetadata(once.left(60), Target::Avif, camera);
    QCOMPARE(damaged.file, once.left(60));
    QCOMPARE(damaged.leftOut, camera);
}

void TestConvertMetadata::tiffOfEitherOrder()
{
    // Big-endian: a title, a position, and the width, which is of the pixels.
    const QByteArray big = QByteArray::fromHex("4d4d002a00000008"
                                               "0003"
                                               "0100000400000001 00000640"
                                               "010e000200000006 00000044"
                                               "8825000400000001 00000032"
                                               "00000000"
                                               "0001 0001000200000002 53000000 00000000"
                                               "4f6b61792100");
    const Metadata found = metadataIn(big);
    QVERIFY(found.exif.contains("Okay!") && !found.exif.contains(QByteArray::fromHex("40060000")));
    QVERIFY(found.exif.contains(QByteArray::fromHex("010002000200000053000000")));
    const QByteArray small = QByteArray::fromHex("49492a0008000000 0100 0001040001000000 40060000 00000000");
    const QByteArray grown = withMetadata(small, Target::Tiff, found).file;
    QCOMPARE(metadataIn(grown).exif, found.exif);
    QVERIFY(grown.contains(QByteArray::fromHex("0001040001000000 40060000 0e01")));
    for (qsizetype length = 0; length < big.size(); ++length)
        QVERIFY(metadataIn(big.left(length)).exif.size() <= found.exif.size());
}

void TestConvertMetadata::placeIsCleared()
{
    const Metadata camera{cameraExif(),
                          xmp("exif:GPSLatitude=\"52,1N\" tiff:Make=\"Okay\"",
                              "<exif:GPSLongitude>4,2E</exif:GPSLongitude><dc:l><rdf:Bag><rdf:li "
                              "exif:GPSAltitude=\"9\"/><exif:GPSTime>1</exif:GPSTime></rdf:Bag></dc:l>")};
    QVERIFY(adaptedMetadata(camera, {1, 1}, true).exif.contains(QByteArray::fromHex("53000000")));
    const Metadata without = adaptedMetadata(camera, {1, 1}, false);
    QVERIFY(!without.exif.contains(QByteArray::fromHex("53000000")));
    QVERIFY(!without.exif.contains(QByteArray::fromHex("2588")));
    QCOMPARE(without.exif.size(), camera.exif.size());
    QVERIFY(without.xmp.contains("tiff:Make=\"Okay\"") && without.xmp.contains("rdf:Bag"));
    QVERIFY2(!without.xmp.contains("GPS"), without.xmp);
    QVERIFY(adaptedMetadata(camera, {1, 1}, true).xmp.count("GPS") == 6);
}

// A segment of a JPEG holds 64 KB.
void TestConvertMetadata::longMetadataOfJpeg()
{
    QByteArray depth;
    for (int i = 0; i < 20'000; ++i)
        depth += QByteArray::number(i) + " \xc3\xa4;";
    const QByteArray history = "<rdf:Seq><rdf:li>" + QByteArray(90'000, 'h') + "</rdf:li></rdf:Seq>";
    const Metadata camera{cameraExif() + QByteArray(70'000, 'x'),
                          xmp("tiff:Make=\"Okay\" dc:depth=\"" + depth + "\"",
                              "<dc:title>Title</dc:title><dc:history>" + history + "</dc:history>")};
    QBuffer file;
    file.open(QIODevice::ReadWrite);
    const QImage image = colourful(64, 32);
    const WriteResult result = writePicture(file, image, {.target = Target::Jpg}, camera);
    QCOMPARE(result.problem, QString());
    QVERIFY2(result.note.startsWith(QStringLiteral("EXIF was left out")), qPrintable(result.note));
    QVERIFY(!result.note.contains(QStringLiteral("XMP")));
    QCOMPARE(QImage::fromData(file.data()).size(), image.size());
    // What readers without extensions see has the short properties.
    const qsizetype packet = file.data().indexOf("<x:xmpmeta");
    const QByteArray first = file.data().mid(packet, file.data().indexOf("</x:xmpmeta>") - packet);
    QVERIFY(first.contains("Title") && first.contains("Okay") && first.contains("HasExtendedXMP"));
    // Other programs compare the digest letter by letter.
    const QByteArray digest = first.mid(first.indexOf("HasExtendedXMP=\"") + 16, 32);
    QCOMPARE(digest, digest.toUpper());
    QVERIFY(file.data().contains(QByteArray("/xmp/extension/\0", 16) + digest));
    const QByteArray whole = metadataIn(file.data()).xmp;
    QVERIFY(whole.contains("Title") && whole.contains(depth) && whole.contains(history));
    QVERIFY(!whole.contains("HasExtendedXMP"));
    for (const QByteArray &text : {first, whole}) { // no tag names a space twice
        const qsizetype list = text.indexOf("<rdf:RDF");
        QCOMPARE(text.mid(list, text.indexOf('>', list) - list).count("xmlns:rdf"), 1);
    }
    // A part that is missing leaves the packet.
    QByteArray torn = file.data();
    torn[torn.lastIndexOf("/xmp/extension/")] = '-';
    QVERIFY(metadataIn(torn).xmp.contains("Title") && !metadataIn(torn).xmp.contains(history));
    const Metadata broken{{}, "<x:xmpmeta"};
    QVERIFY(!writePicture(file, image, {.target = Target::Jpg}, broken).note.isEmpty());
}

void TestConvertMetadata::lostMetadataIsTold_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("told");
    const QByteArray much(5 << 20, 'x');
    const QByteArray keyword("XML:com.adobe.xmp\0", 18);
    const auto png = [](const QByteArray &type, const QByteArray &content) -> QByteArray {
        return hex("89504e470d0a1a0a") + bigBytes(quint32(content.size())) + type + content + "sum.";
    };
    const auto webp = [](const QByteArray &type, const QByteArray &content) -> QByteArray {
        return "RIFFsizeWEBP" + type + littleBytes(quint32(content.size())) + content;
    };
    const auto jxl = [](const QByteArray &type, const QByteArray &content) -> QByteArray {
        return hex("0000000c4a584c200d0a870a") + box(type, content);
    };
    const QString isDamaged = QStringLiteral("EXIF was left out: it is damaged");
    const QString noExif = QStringLiteral("EXIF was left out: it is too long");
    const QString noXmp = QStringLiteral("XMP was left out: it is too long");
    QTest::newRow("nothing is lost") << png("eXIf", cameraExif()) << QString();
    QTest::newRow("damaged") << png("eXIf", "text") << isDamaged;
    QTest::newRow("PNG's EXIF") << png("eXIf", much) << noExif;
    QTest::newRow("XMP with entities")
        << png("iTXt", keyword + QByteArray(4, '\0') + "<!DOCTYPE x [<!ENTITY a 'b'>]>" + xmp(""))
        << QStringLiteral("XMP was left out: it is damaged");
    QTest::newRow("cut off, not too long") << png("eXIf", much).first(5000) << QString();
    QTest::newRow("PNG's XMP") << png("iTXt", keyword + much) << noXmp;
    QTest::newRow("a text that is no XMP") << png("iTXt", much) << QString();
    QTest::newRow("WebP's EXIF") << webp("EXIF", much) << noExif;
    QTest::newRow("WebP's XMP") << webp("XMP ", much) << noXmp;
    QTest::newRow("JXL's EXIF") << jxl("Exif", much) << noExif;
    QTest::newRow("JXL's both") << jxl("Exif", much) + box("xml ", much)
                                << noExif + QStringLiteral(". ") + noXmp;

    const auto heif = [](const QByteArray &item) {
        return box("ftyp", "heic") +
               box("meta", hex("00000000") +
                               box("iinf", hex("00000000 0001") +
                                               box("infe", hex("02000000 0001 0000") + item + '\0')) +
                               box("iloc", hex("00000000 4400 0001 0001 0000 0002 00000000 00280000 "
                                               "00000000 00280000")));
    };
    QTest::newRow("HEIF's EXIF, in two extents") << heif("Exif") + much << noExif;
    QTest::newRow("HEIF's XMP") << heif(QByteArray("mime\0application/rdf+xml", 24)) + much << noXmp;
    QTest::newRow("extents beyond the end") << heif("Exif") << isDamaged;

    const QByteArray veryMuch(9 << 20, 'x');
    QTest::newRow("TIFF's XMP") << hex("49492a0008000000 0100 bc02 0100 00009000 08000000 00000000") +
                                       veryMuch
                                << noXmp;
    QTest::newRow("TIFF's maker note") << hex("49492a0008000000 0100 6987 0400 01000000 1a000000 00000000"
                                              "0200 02a0 0400 01000000 a00f0000"
                                              "     7c92 0700 00009000 08000000 00000000") +
                                              veryMuch
                                       << QStringLiteral("A part of EXIF was left out: it is too long");
    QTest::newRow("TIFF's strips") << hex("49492a0008000000 0100 1101 0400 00002400 08000000 00000000") +
                                          veryMuch
                                   << QString();

    const QByteArray extension("/xmp/extension/\0", 16);
    QByteArray jpeg = written(colourful(8, 8), {.target = Target::Jpg},
                              {{}, xmp("", "<dc:title>" + QByteArray(90'000, 'h') + "</dc:title>")});
    for (qsizetype at = 0; (at = jpeg.indexOf(extension, at)) >= 0; at += extension.size())
        jpeg.replace(at + extension.size() + 32, 4, bigBytes(quint32(much.size())));
    QTest::newRow("JPEG's XMP") << jpeg << QStringLiteral("A part of XMP was left out: it is too long");
}

// What is too long is not read, which is no reason to be silent about it.
void TestConvertMetadata::lostMetadataIsTold()
{
    QFETCH(const QByteArray, file);
    QBuffer target;
    target.open(QIODevice::ReadWrite);
    const WriteResult result =
        writePicture(target, colourful(8, 8), {.target = Target::Png}, metadataIn(file));
    QCOMPARE(result.problem, QString());
    QTEST(result.note, "told");
}

void TestConvertMetadata::cutOffJpeg()
{
    const auto isCut = [](QByteArray file) {
        QBuffer device(&file);
        device.open(QIODevice::ReadOnly);
        return isCutOffJpeg(device);
    };
    // The end's marker stands in the metadata too, and what a telephone adds lies behind it.
    const QByteArray jpeg =
        written(colourful(400, 300), {.target = Target::Jpg}, {cameraExif() + "\xff\xd9", {}});
    QVERIFY(!isCut(jpeg));
    QVERIFY(!isCut(jpeg + QByteArray(100'000, 'x')));
    QVERIFY(isCut(jpeg.chopped(2)));
    QVERIFY(isCut(jpeg.first(jpeg.size() / 2)));
    QVERIFY(!isCut(jpeg.first(10)) && !isCut("text") && !isCut({}));
    const qsizetype end = (1 << 16) + 1; // across two pieces that are read
    const QByteArray start("\xff\xd8\xff\xda", 4);
    for (const qsizetype bytes : {end - 5, end - 4, end - 3})
        QVERIFY(!isCut(start + QByteArray(bytes, 'x') + "\xff\xd9"));
}

void TestConvertMetadata::damagedExif()
{
    // No byte may bring it down, wherever it points to.
    const QByteArray whole = cameraExif();
    for (int at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\0', '\1', '\x7f', '\xff'}) {
            QByteArray damaged = whole;
            damaged[at] = byte;
            const QByteArray result = adaptedExif(damaged, {1, 1}, at % 2 == 0);
            QVERIFY(result.isEmpty() || result.size() == damaged.size());
        }
        QVERIFY(adaptedExif(whole.left(at), {1, 1}, false).size() <= at);
    }
}

QTEST_GUILESS_MAIN(TestConvertMetadata)
#include "tst_convert_metadata.moc"
