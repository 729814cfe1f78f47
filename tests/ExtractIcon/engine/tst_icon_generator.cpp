// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/CropSquare.h"
#include "ExtractIcon/engine/IconPicture.h"
#include "ExtractIcon/engine/IconWriter.h"

#include <QTest>

using namespace icons;

class tst_icon_generator : public QObject
{
    Q_OBJECT

private slots:
    void averagesTheArea();
    void edgesHaveNoFringe();
    void sharpensSmallSizesOnly();
    void squareMayReachOut();
    void refusesWhatNoIconHolds();
    void squares_data();
    void squares();
    void movesInsideThePicture();
};

void tst_icon_generator::averagesTheArea()
{
    // 3 pixels to 2: each result takes one whole pixel and a half of the middle one.
    QImage three(3, 3, QImage::Format_RGB32);
    for (int y = 0; y < 3; ++y) {
        three.setPixel(0, y, qRgb(0, 0, 0));
        three.setPixel(1, y, qRgb(150, 0, 30));
        three.setPixel(2, y, qRgb(255, 255, 255));
    }
    const QImage two = IconPicture(three, three.rect()).made(2, false);
    QCOMPARE(two.pixel(0, 0), qRgb(50, 0, 10));
    QCOMPARE(two.pixel(1, 1), qRgb(220, 170, 180));
    // Not a pixel changes where nothing is scaled, colours that are not opaque among them.
    QImage same(16, 16, QImage::Format_ARGB32);
    for (int i = 0; i < 256; ++i)
        same.setPixel(i % 16, i / 16, qRgba(255 - i, i, 77, std::max(i, 1)));
    QCOMPARE(IconPicture(same, same.rect()).made(16, true), same);
}

// A red shape on transparent pixels that are white, or green: red is all that may be seen.
void tst_icon_generator::edgesHaveNoFringe()
{
    QImage picture(500, 500, QImage::Format_ARGB32);
    for (int y = 0; y < 500; ++y) {
        for (int x = 0; x < 500; ++x) {
            const bool shape = (x - 250) * (x - 250) + (y - 250) * (y - 250) < 230 * 230;
            picture.setPixel(x, y, shape ? 0xffff0000 : x < 250 ? 0x00ffffff : 0x0000ff00);
        }
    }
    const IconPicture whole(picture, picture.rect());
    for (const int side : usualSizes) {
        int edge = 0;
        const QImage made = whole.made(side, true);
        for (int i = 0; i < side * side; ++i) {
            const QRgb pixel = made.pixel(i % side, i / side);
            QVERIFY(qAlpha(pixel) == 0 ? pixel == 0 : (pixel & 0xffffff) == 0xff0000);
            edge += qAlpha(pixel) > 0 && qAlpha(pixel) < 255;
        }
        QVERIFY(edge > side / 2); // the outline is smooth
    }
}

void tst_icon_generator::sharpensSmallSizesOnly()
{
    QImage halves(640, 640, QImage::Format_RGB32);
    halves.fill(qRgb(100, 100, 100));
    for (int y = 0; y < 640; ++y)
        std::fill_n(reinterpret_cast<QRgb *>(halves.scanLine(y)) + 320, 320, qRgb(160, 160, 160));
    const IconPicture picture(halves, halves.rect());
    const auto contrast = [&](int side, bool sharpen) {
        const QImage made = picture.made(side, sharpen);
        return qRed(made.pixel(side / 2, side / 2)) - qRed(made.pixel(side / 2 - 1, side / 2));
    };
    QCOMPARE(contrast(16, false), 60);
    QVERIFY(contrast(16, true) > contrast(32, true));
    QVERIFY(contrast(32, true) > 60);
    QCOMPARE(contrast(64, true), 60);
    QCOMPARE(picture.made(16, true).pixel(0, 8), qRgb(100, 100, 100)); // only where there is an edge
}

void tst_icon_generator::squareMayReachOut()
{
    QImage wide(200, 100, QImage::Format_RGB32);
    wide.fill(Qt::red);
    const QImage made = IconPicture(wide, squareAround(wide.size())).made(16, true);
    QCOMPARE(made.pixel(8, 3), 0U);
    QCOMPARE(made.pixel(8, 4), 0xffff0000);
    QCOMPARE(made.pixel(8, 11), 0xffff0000);
    QCOMPARE(made.pixel(8, 12), 0U);
    QVERIFY(!IconPicture(wide, QRect(300, 0, 50, 50)).isValid());
    QVERIFY(IconPicture(QImage(), QRect(0, 0, 5, 5)).made(16, true).isNull());
    // Larger than the picture.
    QCOMPARE(IconPicture(wide, QRect(0, 0, 3, 3)).made(256, true).pixel(255, 255), 0xffff0000);
}

void tst_icon_generator::refusesWhatNoIconHolds()
{
    QVERIFY(makeIconFile({}).isEmpty());
    QVERIFY(makeIconFile({QImage()}).isEmpty());
    QVERIFY(makeIconFile({QImage(16, 17, QImage::Format_ARGB32)}).isEmpty());
    QVERIFY(makeIconFile({QImage(257, 257, QImage::Format_ARGB32)}).isEmpty());
}

void tst_icon_generator::squares_data()
{
    QTest::addColumn<QPoint>("anchor");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<bool>("centre");
    QTest::addColumn<QRect>("expected"); // in a picture of 200 x 100
    QTest::newRow("down right") << QPoint(10, 10) << QPoint(40, 30) << false << QRect(10, 10, 30, 30);
    QTest::newRow("up left") << QPoint(90, 90) << QPoint(80, 40) << false << QRect(40, 40, 50, 50);
    QTest::newRow("stops at the border")
        << QPoint(10, 60) << QPoint(190, 70) << false << QRect(10, 60, 40, 40);
    QTest::newRow("never too small to hold")
        << QPoint(50, 50) << QPoint(51, 50) << false << QRect(50, 50, 8, 8);
    QTest::newRow("around its centre") << QPoint(100, 50) << QPoint(120, 45) << true << QRect(80, 30, 40, 40);
    QTest::newRow("centre near the border")
        << QPoint(190, 50) << QPoint(0, 50) << true << QRect(180, 40, 20, 20);
    QTest::newRow("from outside") << QPoint(-20, 500) << QPoint(30, 50) << false << QRect(0, 50, 50, 50);
}

void tst_icon_generator::squares()
{
    QFETCH(QPoint, anchor);
    QFETCH(QPoint, to);
    QFETCH(bool, centre);
    QTEST(drawnSquare(anchor, to, QSize(200, 100), centre), "expected");
}

void tst_icon_generator::movesInsideThePicture()
{
    const QSize picture(200, 100);
    QCOMPARE(largestSquare(picture), QRect(50, 0, 100, 100));
    QCOMPARE(squareAround(picture), QRect(0, -50, 200, 200));
    QCOMPARE(movedSquare(QRect(50, 20, 40, 40), QPoint(5, 5), picture), QRect(55, 25, 40, 40));
    QCOMPARE(movedSquare(QRect(50, 20, 40, 40), QPoint(500, -500), picture), QRect(160, 0, 40, 40));
    QCOMPARE(movedSquare(squareAround(picture), QPoint(9, 9), picture), squareAround(picture));
}

QTEST_GUILESS_MAIN(tst_icon_generator)
#include "tst_icon_generator.moc"
