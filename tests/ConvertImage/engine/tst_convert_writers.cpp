// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/GifWriter.h"
#include "ConvertImage/engine/PdfWriter.h"
#include "ConvertImage/engine/Targets.h"
#include "tests/ConvertImage/engine/Written.h"

#include <QBuffer>
#include <QColorSpace>
#include <QGuiApplication>
#include <QTest>

using namespace conversion;

class TestWriters : public QObject
{
    Q_OBJECT

private slots:
    void gifKeepsItsTable_data();
    void gifKeepsItsTable();
    void gifReducesOthers();
    void transparencyBecomesWhite();
    void estimates();
    void pdfGeometry_data();
    void pdfGeometry();
    void pdfPages();
};

void TestWriters::gifKeepsItsTable_data()
{
    QTest::addColumn<int>("colours");
    QTest::addColumn<int>("entries");
    QTest::newRow("a bitmap") << 2 << 2;
    QTest::newRow("3 colours") << 3 << 4;
    QTest::newRow("16 colours") << 16 << 16;
    QTest::newRow("256 colours") << 256 << 256;
}

void TestWriters::gifKeepsItsTable()
{
    QFETCH(int, colours);
    QFETCH(int, entries);
    QImage image(37, 11, colours == 2 ? QImage::Format_Mono : QImage::Format_Indexed8);
    QList<QRgb> table;
    for (int i = 0; i < colours; ++i)
        table.append(qRgb(255 - i, i * 7 % 256, i));
    image.setColorTable(table);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, uint((x * 3 + y) % colours));
    }
    const QByteArray file = written(image, {.target = Target::Gif});
    QVERIFY(file.startsWith("GIF89a"));
    QCOMPARE(2 << (file[10] & 7), entries); // of the screen's colour map
    QCOMPARE(QImage::fromData(file).convertToFormat(QImage::Format_RGB32),
             image.convertToFormat(QImage::Format_RGB32));
}

void TestWriters::gifReducesOthers()
{
    const QImage image = colourful(64, 48);
    const QImage read = QImage::fromData(written(image, {.target = Target::Gif}));
    QCOMPARE(read.size(), image.size());
    int difference = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            difference += qAbs(qRed(read.pixel(x, y)) - qRed(image.pixel(x, y)));
    }
    QVERIFY(difference / (64 * 48) < 24);
    QVERIFY(
        !QImage::fromData(written(image.convertToFormat(QImage::Format_Grayscale8), {.target = Target::Gif}))
             .isNull());
}

void TestWriters::transparencyBecomesWhite()
{
    QImage image(8, 8, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    for (const Target target : {Target::Jpg, Target::Gif}) {
        const QImage read = QImage::fromData(written(image, {.target = target}));
        QVERIFY(qGray(read.pixel(4, 4)) > 250);
    }
    QCOMPARE(qAlpha(QImage::fromData(written(image, {.target = Target::Png})).pixel(4, 4)), 0);
    // Colours of a wider space are converted where there is no room for the profile.
    QImage wide(1, 1, QImage::Format_RGB32);
    wide.fill(qRgb(0, 200, 0));
    wide.setColorSpace(QColorSpace::AdobeRgb);
    QVERIFY(preparedFor(Target::Gif, wide).pixel(0, 0) != wide.pixel(0, 0));
    QCOMPARE(preparedFor(Target::Png, wide).colorSpace(), wide.colorSpace());
}

void TestWriters::estimates()
{
    const QImage image = colourful(2600, 1900);
    for (const Target target : {Target::Jpg, Target::Png}) {
        const double real = double(written(image, {.target = target}).size());
        const double estimate = double(estimatedBytes(image, {.target = target}));
        QVERIFY2(estimate > real * 0.6 && estimate < real * 1.7,
                 qPrintable(QString::number(estimate / real)));
    }
}

void TestWriters::pdfGeometry_data()
{
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<QSize>("expected");
    const QSize box = pdfBox(1200, 1200);
    QCOMPARE(box, QSize(9580, 13660));
    QTest::newRow("small and wide: enlarged to the width") << QSize(200, 100) << QSize(9580, 4790);
    QTest::newRow("small and high: enlarged to the height") << QSize(100, 200) << QSize(6830, 13660);
    QTest::newRow("large") << QSize(19160, 100) << QSize(9580, 50);
    QTest::newRow("one side larger") << QSize(100, 27320) << QSize(50, 13660);
    QTest::newRow("the box itself") << box << box;
    QTest::newRow("nothing") << QSize(0, 0) << QSize();
}

void TestWriters::pdfGeometry()
{
    QFETCH(QSize, picture);
    QTEST(pdfImageSize(picture, pdfBox(1200, 1200)), "expected");
    QVERIFY(!cutOffOn(PaperSize::A4) && cutOffOn(PaperSize::Letter) && cutOffOn(PaperSize::A5));
    QVERIFY(!cutOffOn(PaperSize::Legal) && cutOffOn(PaperSize::Executive));
}

void TestWriters::pdfPages()
{
    QBuffer file;
    file.open(QIODevice::ReadWrite);
    PdfDocument document(file, PaperSize::Letter);
    for (const QImage &page : {colourful(50, 40), QImage(), colourful(40, 50)})
        QCOMPARE(document.addPage(page), QString());
    QVERIFY(document.finish());
    QVERIFY(file.data().startsWith("%PDF-"));
    QCOMPARE(file.data().count("/Type /Page\n"), 3);
}

int main(int argc, char **argv)
{
#ifndef Q_OS_WIN
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the build machine may have no display
#endif
    QGuiApplication application(argc, argv);
    TestWriters test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_convert_writers.moc"
