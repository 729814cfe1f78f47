// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Adjustments.h"
#include "ConvertImage/engine/Blur.h"
#include "ConvertImage/engine/Render.h"
#include "ConvertImage/engine/Resizing.h"

#include <QColorSpace>
#include <QGuiApplication>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>

using namespace conversion;

namespace
{

// The steps one after the other in double precision, as they are described, and nothing else.
QRgb plainly(QRgb pixel, const Adjustments &wanted)
{
    double channel[3] = {double(qRed(pixel)), double(qGreen(pixel)), double(qBlue(pixel))};
    const double contrast = wanted.contrast;
    double divisor = (259 - contrast) * 255;
    if (divisor == 0)
        divisor = (258 - contrast) * 255;
    const double factor = (contrast + 255) * 259 / divisor;
    const double gamma = (wanted.gamma + 100.0) / 100.0;
    for (double &x : channel) {
        if (wanted.contrast != 0)
            x = (x - 128) * factor + 128;
        if (wanted.brightness != 0)
            x += wanted.brightness;
        if (gamma != 0 && gamma != 1)
            x = std::pow((x < 0 ? 0 : x) / 255, 1 / gamma) * 255;
    }
    auto &[red, green, blue] = channel;
    if (wanted.sepia) {
        red = 0.393 * red + 0.769 * green + 0.189 * blue;
        green = 0.686 * green + 0.349 * red + 0.168 * blue;
        blue = 0.534 * green + 0.272 * red + 0.131 * blue;
    }
    for (double &x : channel) {
        if (wanted.invertBelow != 0 && x < wanted.invertBelow)
            x = 255 - x;
        x = x < 0 ? 0 : x > 255 ? 255 : x;
    }
    return qRgba(int(red), int(green), int(blue), qAlpha(pixel));
}

QImage onePixel(QRgb pixel)
{
    QImage image(1, 1, qAlpha(pixel) == 255 ? QImage::Format_RGB32 : QImage::Format_ARGB32);
    image.setPixel(0, 0, pixel);
    return image;
}

} // namespace

class TestRendering : public QObject
{
    Q_OBJECT

private slots:
    void knownColours_data();
    void knownColours();
    void everyColourAsComputedPlainly();
    void nothingToAdjust();
    void transparency();
    void blurSpreadsAndKeepsEdges();
    void sizes_data();
    void sizes();
    void scalingKeepsDepth();
    void corners_data();
    void corners();
    void qrOfWholePixels();
    void order();
    void problems();
};

void TestRendering::knownColours_data()
{
    QTest::addColumn<QRgb>("pixel");
    QTest::addColumn<Adjustments>("wanted");
    QTest::addColumn<QRgb>("expected");
    const auto row = [](const char *name, QRgb pixel, const Adjustments &wanted, QRgb expected) {
        QTest::newRow(name) << pixel << wanted << expected;
    };
    row("contrast 100", qRgb(100, 150, 128), {.contrast = 100}, qRgb(64, 177, 128));
    row("contrast -100 cuts off, does not round", qRgb(100, 100, 100), {.contrast = -100},
        qRgb(115, 115, 115));
    row("contrast 259 has a divisor", qRgb(127, 128, 129), {.contrast = 259}, qRgb(255, 128, 0));
    row("brightness stops at white", qRgb(255, 100, 0), {.brightness = 50}, qRgb(255, 150, 50));
    row("no limit between the steps", qRgb(250, 250, 250), {.contrast = 50, .brightness = -150},
        qRgb(158, 158, 158));
    row("gamma 50", qRgb(100, 0, 255), {.gamma = 50}, qRgb(136, 0, 255));
    row("gamma -50", qRgb(100, 0, 255), {.gamma = -50}, qRgb(39, 0, 255));
    row("gamma -100 is left out", qRgb(100, 50, 200), {.gamma = -100}, qRgb(100, 50, 200));
    row("gamma below -100: black has no power", qRgb(0, 255, 255), {.gamma = -150}, qRgb(255, 255, 255));
    row("gamma of a negative value", qRgb(10, 10, 10), {.brightness = -50, .gamma = 50}, qRgb(0, 0, 0));
    row("sepia of grey", qRgb(100, 100, 100), {.sepia = true}, qRgb(135, 132, 120));
    row("sepia chains", qRgb(200, 50, 10), {.sepia = true}, qRgb(118, 77, 75));
    row("invert below 128", qRgb(100, 200, 127), {.invertBelow = 128}, qRgb(155, 200, 128));
    row("invert 255 leaves white", qRgb(255, 254, 0), {.invertBelow = 255}, qRgb(255, 1, 255));
    row("invert sees negative values", qRgb(30, 0, 60), {.brightness = -50, .invertBelow = 1},
        qRgb(255, 255, 10));
}

void TestRendering::knownColours()
{
    QFETCH(QRgb, pixel);
    QFETCH(Adjustments, wanted);
    QFETCH(QRgb, expected);
    QCOMPARE(QColor(adjusted(onePixel(pixel), wanted).pixel(0, 0)).name(), QColor(expected).name());
}

void TestRendering::everyColourAsComputedPlainly()
{
    QRandomGenerator random(7);
    QImage image(301, 200, QImage::Format_RGB32); // an odd width: the last pixel of a row goes its own way
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, random.generate() | 0xff000000u);
    }
    for (int round = 0; round < 40; ++round) {
        Adjustments wanted{.contrast = round % 5 == 0 ? 0 : random.bounded(-255, 260),
                           .brightness = round % 7 == 0 ? 0 : random.bounded(-255, 256),
                           .gamma = round % 3 == 0 ? 0 : random.bounded(-200, 300),
                           .sepia = round % 2 == 0,
                           .invertBelow = round % 4 == 0 ? random.bounded(-20, 257) : 0};
        const QImage result = adjusted(image, wanted);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (result.pixel(x, y) != plainly(image.pixel(x, y), wanted))
                    QFAIL(qPrintable(
                        QStringLiteral("round %1, pixel %2").arg(round).arg(image.pixel(x, y), 0, 16)));
            }
        }
    }
}

void TestRendering::nothingToAdjust()
{
    QImage table(4, 4, QImage::Format_Indexed8);
    table.setColorTable({qRgb(1, 2, 3), qRgb(4, 5, 6)});
    table.fill(1);
    QCOMPARE(adjusted(table, {}).format(), QImage::Format_Indexed8);
    Rendering rendering;
    rendering.marks.text = {.content = QStringLiteral("x"), .opacity = 0};
    QCOMPARE(render(table, rendering, {}, false).image.colorTable(), table.colorTable());
}

void TestRendering::transparency()
{
    const QRgb hidden = qRgba(200, 0, 0, 0);
    const QRgb half = qRgba(10, 20, 30, 128);
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, hidden);
    image.setPixel(1, 0, half);
    const QImage brighter = adjusted(image, {.brightness = 10});
    QCOMPARE(qAlpha(brighter.pixel(0, 0)), 0);
    QCOMPARE(brighter.pixel(1, 0), qRgba(20, 30, 40, 128));
    const QImage greyed = grey(image);
    QCOMPARE(qAlpha(greyed.pixel(0, 0)), 0);
    QCOMPARE(qRed(greyed.pixel(1, 0)), qBlue(greyed.pixel(1, 0)));
    QCOMPARE(grey(onePixel(qRgb(255, 0, 0))).format(), QImage::Format_Grayscale8);
    // The hidden red does not come out at the rim.
    const QImage soft = blurred(image, 3);
    QVERIFY(qRed(soft.pixel(1, 0)) < 30);
}

void TestRendering::blurSpreadsAndKeepsEdges()
{
    QImage flat(40, 30, QImage::Format_RGB32);
    flat.fill(qRgb(90, 120, 200));
    QCOMPARE(blurred(flat, 8), flat);
    QImage dot(61, 61, QImage::Format_RGB32);
    dot.fill(Qt::black);
    dot.setPixel(30, 30, qRgb(255, 255, 255));
    for (int y = 26; y < 35; ++y) {
        for (int x = 26; x < 35; ++x)
            dot.setPixel(x, y, qRgb(255, 255, 255));
    }
    const QImage soft = blurred(dot, 2);
    const int middle = qRed(soft.pixel(30, 30));
    QVERIFY2(middle > 150 && middle < 255, qPrintable(QString::number(middle)));
    const int near = qRed(soft.pixel(36, 30));
    QVERIFY(near > 10 && near < middle);
    QVERIFY(qAbs(near - qRed(soft.pixel(24, 30))) <= 2); // the same on both sides
    QVERIFY(qAbs(near - qRed(soft.pixel(30, 24))) <= 2);
    QCOMPARE(qRed(soft.pixel(0, 0)), 0);
}

void TestRendering::sizes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<Resize>("resize");
    QTest::addColumn<QSize>("expected");
    const auto percent = [](int percentage) { return Resize{.on = true, .percentage = percentage}; };
    const auto wide = [](int width) {
        return Resize{.on = true, .mode = ScaleMode::Relative, .relativeWidth = width};
    };
    const auto high = [](int height) {
        return Resize{
            .on = true, .mode = ScaleMode::Relative, .relativeTo = Side::Height, .relativeHeight = height};
    };
    QTest::newRow("off") << QSize(10, 10) << Resize{.percentage = 50} << QSize(10, 10);
    QTest::newRow("half, cut off") << QSize(101, 51) << percent(50) << QSize(50, 25);
    QTest::newRow("beyond 32 bits") << QSize(40000, 30000) << percent(200000) << QSize(80000000, 60000000);
    QTest::newRow("to nothing") << QSize(1, 1) << percent(50) << QSize(0, 0);
    QTest::newRow("absolute") << QSize(10, 10) << Resize{.on = true, .mode = ScaleMode::Absolute}
                              << QSize(1920, 1080);
    QTest::newRow("width, factor one up") << QSize(1000, 500) << wide(1920) << QSize(1920, 500);
    QTest::newRow("width, factor one down") << QSize(3000, 1500) << wide(1920) << QSize(1920, 1500);
    QTest::newRow("width, three times") << QSize(600, 400) << wide(1920) << QSize(1920, 1200);
    QTest::newRow("width, half") << QSize(4000, 1000) << wide(1920) << QSize(1920, 500);
    QTest::newRow("width, the same") << QSize(1920, 77) << wide(1920) << QSize(1920, 77);
    QTest::newRow("width, nothing") << QSize(10, 10) << wide(0) << QSize(10, 10);
    QTest::newRow("height") << QSize(400, 600) << high(1920) << QSize(1200, 1920);
}

void TestRendering::sizes()
{
    QFETCH(QSize, size);
    QFETCH(Resize, resize);
    QTEST(resizedSize(size, resize), "expected");
}

void TestRendering::scalingKeepsDepth()
{
    QImage deep(8, 8, QImage::Format_Grayscale16);
    for (int y = 0; y < deep.height(); ++y)
        std::fill_n(reinterpret_cast<quint16 *>(deep.scanLine(y)), deep.width(), quint16(0x1234));
    deep.setColorSpace(QColorSpace::AdobeRgb);
    const QImage small = resized(deep, {4, 4}, false);
    QCOMPARE(small.size(), QSize(4, 4));
    QCOMPARE(small.format(), QImage::Format_Grayscale16);
    const auto value = reinterpret_cast<const quint16 *>(small.constScanLine(2))[2];
    QVERIFY2(qAbs(value - 0x1234) < 16, qPrintable(QString::number(value, 16)));
    QCOMPARE(small.colorSpace(), deep.colorSpace());
}

void TestRendering::corners_data()
{
    QTest::addColumn<QPoint>("expected");
    QTest::newRow("0") << QPoint(5, 5);
    QTest::newRow("1") << QPoint(40, 5);
    QTest::newRow("2") << QPoint(75, 5);
    QTest::newRow("3") << QPoint(5, 20);
    QTest::newRow("4") << QPoint(40, 20);
    QTest::newRow("5") << QPoint(75, 20);
    QTest::newRow("6") << QPoint(5, 35);
    QTest::newRow("7") << QPoint(40, 35);
    QTest::newRow("8") << QPoint(75, 35);
}

void TestRendering::corners()
{
    const auto position = static_cast<Position>(QByteArray(QTest::currentDataTag()).toInt());
    QTEST(markCorner({100, 50}, {20, 10}, position, 5), "expected");
}

void TestRendering::qrOfWholePixels()
{
    const QString text = QStringLiteral("https://example.org"); // 25 modules and 8 of quiet zone
    QCOMPARE(qrImage(text, 100).size(), QSize(99, 99));
    QCOMPARE(qrImage(text, 5).size(), QSize(33, 33));
    QCOMPARE(qrModulePixels(text, 100), 3);
    const QImage code = qrImage(text, 100);
    QCOMPARE(code.pixel(11, 11), qRgb(255, 255, 255));
    QCOMPARE(code.pixel(12, 12), qRgb(0, 0, 0));
    QVERIFY(qrImage(QString(8000, u'x'), 100).isNull());
}

void TestRendering::order()
{
    QImage image(100, 80, QImage::Format_RGB32);
    image.fill(Qt::red);
    Rendering rendering;
    rendering.resize = {.on = true, .percentage = 50};
    rendering.adjustments.grayScale = true;
    rendering.marks.picture = {.path = QStringLiteral("mark"), .percent = 50, .opacity = 100, .margin = 1};
    QImage mark(20, 20, QImage::Format_RGB32);
    mark.fill(Qt::blue);
    const Rendered result = render(image, rendering, {mark, {}}, false);
    QCOMPARE(result.image.size(), QSize(50, 40));
    const QRgb greyOfRed = onePixel(qRgb(255, 0, 0)).convertToFormat(QImage::Format_Grayscale8).pixel(0, 0);
    QCOMPARE(result.image.pixel(0, 0), greyOfRed);
    // Over the grey, in colour, at the size of the output.
    QCOMPARE(result.image.pixel(48, 38), qRgb(0, 0, 255));
    QCOMPARE(result.image.pixel(39, 29), qRgb(0, 0, 255));
    QCOMPARE(result.image.pixel(38, 29), greyOfRed);
    QCOMPARE(result.image.pixel(49, 39), greyOfRed);
    rendering.marks = {};
    rendering.marks.text = {
        .content = QStringLiteral("Larkspur"), .color = Qt::green, .position = Position::Center};
    const QImage written = render(image, rendering, {}, false).image;
    int green = 0;
    for (int y = 0; y < written.height(); ++y) {
        for (int x = 0; x < written.width(); ++x)
            green += qGreen(written.pixel(x, y)) > 200 && qRed(written.pixel(x, y)) < 60 ? 1 : 0;
    }
    QVERIFY2(green > 10, qPrintable(QString::number(green)));
}

void TestRendering::problems()
{
    QImage image(1, 1, QImage::Format_RGB32);
    Rendering rendering;
    rendering.resize = {.on = true, .percentage = 50};
    QCOMPARE(render(image, rendering, {}, false).problem, RenderProblem::NoSize);
    rendering.resize.percentage = 100'000'000;
    QCOMPARE(render(image, rendering, {}, false).problem, RenderProblem::TooLarge);
    QCOMPARE(render({}, {}, {}, false).problem, RenderProblem::NoImage);
}

int main(int argc, char **argv)
{
#ifndef Q_OS_WIN
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the build machine may have no display
#endif
    QGuiApplication application(argc, argv);
    TestRendering test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_convert_rendering.moc"
