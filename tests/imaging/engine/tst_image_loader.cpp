// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/engine/ImageLoader.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

QImage picture(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::blue);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width / 2; ++x)
            image.setPixel(x, y, qRgb(255, 255, 0));
    return image;
}

QByteArray encoded(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, 90);
    return bytes;
}

// A JPEG file with an Exif segment that holds nothing but the orientation.
QByteArray orientedJpeg(const QImage &image, char orientation)
{
    QByteArray exif("Exif\0\0MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0?\0\0\0\0\0\0", 32);
    exif[25] = orientation;
    QByteArray bytes = encoded(image, "JPG");
    const QByteArray head("\xff\xe1\0\x22", 4);
    return bytes.insert(2, head + exif);
}

} // namespace

class ImageLoaderTest : public QObject
{
    Q_OBJECT

private slots:
    void contentDecides();
    void refused();
    void orientationIsApplied();
    void limitIsKept();
    void sizeBeyond32Bits();
    void onlyRegularFiles();

private:
    QString write(const QString &name, const QByteArray &content);

    QTemporaryDir m_folder;
};

QString ImageLoaderTest::write(const QString &name, const QByteArray &content)
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no test file");
    return file.fileName();
}

void ImageLoaderTest::contentDecides()
{
    const QString path = write(u"b.png"_s, encoded(picture(60, 50), "JPG"));
    QImage image;
    QVERIFY(imaging::loadImage(path, image));
    QCOMPARE(image.size(), QSize(60, 50));
    const auto loaded = imaging::readImage(path);
    QVERIFY(loaded);
    QCOMPARE(loaded->format, "jpeg");
    QCOMPARE(loaded->image, image);
}

void ImageLoaderTest::refused()
{
    const QByteArray png = encoded(picture(200, 200), "PNG");
    for (const QByteArray &content : {QByteArray("not a picture"), QByteArray(), png.first(10),
                                      QByteArray(png).replace("IHDR", "IHDX")}) {
        QImage image = picture(7, 7);
        QVERIFY(!imaging::loadImage(write(u"x.png"_s, content), image));
        QCOMPARE(image.size(), QSize(7, 7)); // left alone
    }
}

void ImageLoaderTest::orientationIsApplied()
{
    const QImage lying = picture(80, 40); // its left half is yellow
    QImage image;
    QVERIFY(imaging::loadImage(write(u"0.jpg"_s, orientedJpeg(lying, 1)), image));
    QCOMPARE(image.size(), QSize(80, 40));
    QVERIFY(imaging::loadImage(write(u"6.jpg"_s, orientedJpeg(lying, 6)), image)); // 90 degrees to the right
    QCOMPARE(image.size(), QSize(40, 80));
    QVERIFY(image.pixelColor(20, 10).red() > 200); // left has become top
    QVERIFY(image.pixelColor(20, 70).blue() > 200);
}

// Told by the header alone: these files have no pixels.
void ImageLoaderTest::limitIsKept()
{
    constexpr qint64 refused = -1;
    const std::pair<QSize, qint64> pictures[] = {
        {{8192, 8192}, qint64(256) << 20}, {{8192, 8193}, refused}, {{32767, 32767}, refused}};
    for (const auto &[size, expected] : pictures) {
        const QString header = u"P6\n%1 %2\n255\n"_s.arg(size.width()).arg(size.height());
        qint64 announced = refused;
        imaging::readImage(write(u"huge.ppm"_s, header.toLatin1()), [&](qint64 bytes) { announced = bytes; });
        QCOMPARE(announced, expected);
    }
    QCOMPARE(QImageReader::allocationLimit(), 256);
}

void ImageLoaderTest::sizeBeyond32Bits()
{
    // A header of 65536 by 65536 pixels, up to where the data would begin.
    const QByteArray header = QByteArray::fromHex("89504e470d0a1a0a"
                                                  "0000000d4948445200010000000100000802000000e3e6a7b4"
                                                  "0000000149444154");
    const QString path = write(u"huge.png"_s, header);
    QCOMPARE(QImageReader(path).size(), QSize(65536, 65536));
    bool decodes = false;
    QVERIFY(!imaging::readImage(path, [&](qint64) { decodes = true; }));
    QVERIFY(!decodes);
}

void ImageLoaderTest::onlyRegularFiles()
{
    QImage image;
    // Qt would try this name with every extension it knows.
    write(u"half a name.png"_s, encoded(picture(60, 50), "PNG"));
    QVERIFY(!imaging::loadImage(m_folder.filePath(u"half a name"_s), image));
    QVERIFY(QDir(m_folder.path()).mkdir(u"folder.png"_s));
    QVERIFY(!imaging::loadImage(m_folder.filePath(u"folder.png"_s), image));
    QVERIFY(!imaging::loadImage(m_folder.filePath(u"missing.png"_s), image));
    QVERIFY(!imaging::loadImage(QString(), image));
    QVERIFY(!imaging::loadImage(u":/missing.png"_s, image));
}

QTEST_GUILESS_MAIN(ImageLoaderTest)
#include "tst_image_loader.moc"
