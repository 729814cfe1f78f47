// SPDX-License-Identifier: GPL-3.0-or-later
// Every image format of the suite through the plugins that are deployed: what is written is read again.
#include "imaging/engine/ImageLoader.h"
#include "tests/formats/Pictures.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QColorSpace>
#include <QTransform>

using namespace Qt::StringLiterals;
using Transformation = QImageIOHandler::Transformation;

namespace
{

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

// What the plugins write, by the suffix of the file.
const QList<QByteArray> written = {"avif", "heic", "heif", "jxl", "webp", "tiff", "tif", "png", "bmp", "jpg"};

} // namespace

class TestFormats : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void isSupported_data();
    void isSupported();
    void roundTrip_data();
    void roundTrip();
    void keepsEveryBit_data() { formatRows({"avif", "heic", "jxl", "webp", "tiff", "png"}); }
    void keepsEveryBit();
    void keepsDepth_data() { formatRows({"avif", "jxl", "tiff", "png"}); }
    void keepsDepth();
    void keepsColourSpace_data() { formatRows({"avif", "heic", "jxl", "webp", "tiff", "png", "jpg"}); }
    void keepsColourSpace();
    void qualityMatters_data() { formatRows({"avif", "heic", "jxl", "webp", "jpg"}); }
    void qualityMatters();
    void compressedTiff_data();
    void compressedTiff();
    void isUpright_data();
    void isUpright();
    void drawsVectors_data();
    void drawsVectors();
};

void TestFormats::initTestCase()
{
    tests::requireTestPrefix();
    QImageReader::setAllocationLimit(imaging::imageAllocationLimit);
}

void TestFormats::isSupported_data()
{
    formatRows({"avif", "bmp", "gif", "heif", "heic", "jpg", "jpeg", "jxl", "png", "psd", "svg", "tif",
                "tiff", "webp"});
}

void TestFormats::isSupported()
{
    QFETCH(QByteArray, format);
    QVERIFY(QImageReader::supportedImageFormats().contains(format));
    QCOMPARE(QImageWriter::supportedImageFormats().contains(format),
             format != "gif" && format != "psd" && format != "svg");
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
    const auto loaded = imaging::readImage(path);
    QVERIFY(loaded);
    QCOMPARE(loaded->image.size(), size);
    VERIFY_NEAR(loaded->image, image, 4);
    QVERIFY(!loaded->image.hasAlphaChannel());
}

void TestFormats::keepsEveryBit()
{
    QFETCH(QByteArray, format);
    const QImage image = picture({61, 47});
    QCOMPARE(difference(decoded(encoded(image, format, 100)), image).worst, 0);
    const QImage transparent = transparentPicture({61, 47});
    const QImage back = decoded(encoded(transparent, format, 100));
    QVERIFY(back.hasAlphaChannel());
    // libtiff multiplies by the transparency, which rounds.
    const int worst = difference(back, transparent).worst;
    QVERIFY2(worst <= (format == "tiff" ? 2 : 0), qPrintable(QString::number(worst)));
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

void TestFormats::compressedTiff_data()
{
    QTest::addColumn<QImage::Format>("format");
    QTest::addColumn<double>("share"); // of the bytes of its pixels that a picture may take
    QTest::newRow("8 bits") << QImage::Format_RGB888 << 0.1;
    QTest::newRow("with alpha") << QImage::Format_RGBA8888 << 0.1;
    QTest::newRow("grey") << QImage::Format_Grayscale8 << 0.1;
    QTest::newRow("16 bits") << QImage::Format_RGBX64 << 0.1;
    QTest::newRow("colour table") << QImage::Format_Indexed8 << 1.0;
    QTest::newRow("bitmap") << QImage::Format_Mono << 1.0;
    QTest::newRow("real numbers") << QImage::Format_RGBX32FPx4 << 1.0;
}

void TestFormats::compressedTiff()
{
    QFETCH(QImage::Format, format);
    const QImage image = picture({512, 384}, format);
    const QImage given = image.copy();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "tiff");
    writer.setCompression(1);
    QVERIFY(writer.write(given));
    QCOMPARE(given, image); // the writer works on a copy
    QCOMPARE(difference(decoded(buffer.data()), image).worst, 0);
    QFETCH(double, share);
    QVERIFY2(double(buffer.size()) < share * double(image.sizeInBytes()),
             qPrintable(QString::number(buffer.size())));
}

void TestFormats::isUpright_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<int>("transformation");
    for (const char *format : {"avif", "heic", "tiff", "jpg", "webp", "png"}) {
        for (int transformation = 0; transformation < 8; ++transformation)
            QTest::addRow("%s %d", format, transformation) << QByteArray(format) << transformation;
    }
}

// What a viewer has to do is stored beside the pixels and done by the loader, or done when the file is
// written.
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
    QVERIFY(imaging::loadImage(folder.makeFile(u"turned"_s, content), loaded));
    VERIFY_NEAR(loaded, expected, 3);
    // The size is known before the pixels are, and is that of the stored picture or of the upright one.
    QBuffer buffer;
    buffer.setData(content);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    QCOMPARE(turned ? reader.size().transposed() : reader.size(), expected.size());
}

// What is drawn at the middle of a picture of 24 pixels.
void TestFormats::drawsVectors_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QColor>("middle");
    const QColor nothing(0, 0, 0, 0);
    QTest::newRow("style sheet") << "<style>.a{fill:#f00}</style><rect class='a' width='24' height='24'/>"_ba
                                 << QColor(Qt::red);
    QTest::newRow("gradient") << "<linearGradient id='g'><stop stop-color='#00f'/></linearGradient>"
                                 "<circle cx='12' cy='12' r='9' fill='url(#g)'/>"_ba
                              << QColor(Qt::blue);
    QTest::newRow("use") << "<defs><path id='p' d='M0 0h9v9H0z' fill='rgb(0,255,0)'/></defs>"
                            "<use href='#p' x='8' y='8'/>"_ba
                         << QColor(Qt::green);
    QTest::newRow("text") << "<text x='4' y='20' font-size='20'>I</text>"_ba << nothing;
    QTest::newRow("another file") << "<image href='file:///FILE' width='24' height='24'/>"_ba << nothing;
    QTest::newRow("another style sheet") << "<rect width='24' height='24' fill='none'/>"_ba << nothing;
    QTest::newRow("itself") << "<g id='a'><use href='#a'/><use href='#a'/></g>"_ba << nothing;
}

void TestFormats::drawsVectors()
{
    QFETCH(QByteArray, content);
    const tests::TestFolder folder;
    const QString other = folder.path(u"other.png"_s);
    QVERIFY(picture({24, 24}).save(other));
    folder.makeFile(u"other.css"_s, "rect{fill:#f00 !important}");
    const QString path = folder.makeFile(
        u"a.svg"_s, "<?xml-stylesheet type=\"text/css\" href=\"" + folder.path(u"other.css"_s).toUtf8() +
                        "\"?><svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 24 24'>" +
                        content.replace("FILE", other.toUtf8()) + "</svg>");
    const auto loaded = imaging::readImage(path);
    QVERIFY(loaded);
    QCOMPARE(loaded->image.size(), QSize(imaging::vectorSide, imaging::vectorSide));
    QTEST(loaded->image.pixelColor(500, 500), "middle");
}

QTEST_GUILESS_MAIN(TestFormats)
#include "tst_formats.moc"
