// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WindowGeometry.h"
#include "settings/Keys.h"
#include "settings/Settings.h"
#include "tests/app/LogCapture.h"
#include "tests/support/TestPrefix.h"

#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(WindowGeometry)

char *toString(const WindowGeometry &g)
{
    return qstrdup(qPrintable(u"x %1 y %2 w %3 h %4"_s.arg(static_cast<int>(g.x))
                                  .arg(static_cast<int>(g.y))
                                  .arg(g.width)
                                  .arg(g.height)));
}

namespace
{

constexpr quint32 negative(int value)
{
    return static_cast<quint32>(value);
}

} // namespace

class tst_WindowGeometry : public QObject
{
    Q_OBJECT

private slots:
    void fits_data();
    void fits();
    void comesIntoView();
    void readsAndWritesTheRegistry();
};

void tst_WindowGeometry::fits_data()
{
    QTest::addColumn<WindowGeometry>("stored");
    QTest::addColumn<quint32>("cx");
    QTest::addColumn<quint32>("cy");
    QTest::addColumn<WindowGeometry>("expected");
    const auto row = [](const char *name, WindowGeometry stored, WindowGeometry expected, quint32 cx = 1280,
                        quint32 cy = 811) { QTest::newRow(name) << stored << cx << cy << expected; };
    row("defaults", {}, {100, 100, 986, 513});
    row("x left of the screen", {negative(-100), 100, 986, 513}, {100, 100, 986, 513});
    row("x at the edge stays, then moves for the width", {1280, 100, 986, 513}, {294, 100, 986, 513});
    row("x beyond", {1281, 100, 500, 513}, {100, 100, 986, 513});
    row("y at the edge stays", {100, 811, 986, 500}, {100, 811, 986, 513});
    row("y beyond", {100, 812, 986, 500}, {100, 100, 986, 513});
    row("too narrow: x stays", {1200, 100, 985, 513}, {1200, 100, 986, 513});
    row("one beyond the edge", {295, 100, 986, 513}, {294, 100, 986, 513});
    row("a small screen", {100, 100, 986, 513}, {38, 100, 986, 513}, 1024, 700);
    row("a screen narrower than the smallest window", {100, 100, 2000, 513}, {100, 87, 800, 513}, 800, 600);
    row("too low: y stays", {100, 500, 986, 512}, {100, 500, 986, 513});
    row("y moves up", {100, 400, 986, 513}, {100, 298, 986, 513});
    row("higher than the screen, not than its width", {100, 100, 986, 1000},
        {100, negative(-189), 986, 1000});
    row("as high as the screen is wide", {100, 100, 986, 1280}, {100, negative(-469), 986, 1280});
    row("higher than the screen is wide", {100, 100, 986, 1281}, {100, 100, 986, 811});
    row("numbers at their limit", {0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}, {100, 100, 1280, 811});
}

void tst_WindowGeometry::fits()
{
    QFETCH(const WindowGeometry, stored);
    QFETCH(const quint32, cx);
    QFETCH(const quint32, cy);
    QFETCH(const WindowGeometry, expected);
    QCOMPARE(fitted(stored, cx, cy), expected);
}

// Two screens side by side, the left one lower; a title bar of 30.
void tst_WindowGeometry::comesIntoView()
{
    const QList<QRect> screens{QRect(0, 0, 1280, 800), QRect(-1024, 200, 1024, 768)};
    const auto placed = [&screens](int x, int y, int width = 986, int height = 543) {
        return visiblePosition(QRect(x, y, width, height), 30, screens);
    };
    QCOMPARE(placed(100, 100), QPoint(100, 100));
    QCOMPARE(placed(400, 100), QPoint(294, 100));  // over the right edge
    QCOMPARE(placed(1279, 799), QPoint(294, 257)); // its corner alone is seen
    QCOMPARE(placed(100, -29), QPoint(100, 0));
    QCOMPARE(placed(-1000, 300), QPoint(-1000, 300)); // all of it on the left screen
    QCOMPARE(placed(-900, 300), QPoint(-986, 300));   // most of it
    QCOMPARE(placed(-1000, 50, 800), QPoint(-1000, 200));
    // What does not fit: the title bar, and its left end.
    QCOMPARE(placed(100, -219, 986, 1030), QPoint(100, 0));
    QCOMPARE(placed(-9000, 300, 1100), QPoint(-1024, 300));
    QCOMPARE(visiblePosition(QRect(5, 6, 7, 8), 30, {}), QPoint(5, 6));

    QVERIFY(isOn(QRect(-1020, 230, 986, 513), {screens.at(1)}));
    QVERIFY(!isOn(QRect(-1020, 230, 985, 513), {screens.at(1)})); // smaller than it may be
    QVERIFY(!isOn(QRect(-1030, 230, 986, 513), {screens.at(1)}));
    QVERIFY(!isOn(QRect(100, 100, 986, 513), {}));
}

void tst_WindowGeometry::readsAndWritesTheRegistry()
{
    const tests::LogCapture quiet;
    const tests::RegistryGuard guard;
    QCOMPARE(storedGeometry(), WindowGeometry());
    storeGeometry(WindowGeometry::of(QRect(-300, -7, 1200, 700)));
    QCOMPARE(storedGeometry().rect(), QRect(-300, -7, 1200, 700));
    for (const auto &[name, expected] : {std::pair{u"posX", negative(-300)},
                                         {u"posY", negative(-7)},
                                         {u"width", 1200u},
                                         {u"height", 700u}}) {
        quint32 value = 0;
        QVERIFY(settings::readDword(u"Software\\Fernlight Larkspur", name, value));
        QCOMPARE(value, expected);
    }
    QVERIFY(!storedMaximized());
    storeGeometry(storedGeometry(), true);
    QVERIFY(storedMaximized());
    settings::writeString(settings::keys::root, u"width", u"500"); // no number: as if it were absent
    QCOMPARE(storedGeometry().rect(), QRect(-300, -7, 986, 700));
}

QTEST_APPLESS_MAIN(tst_WindowGeometry)

#include "tst_window_geometry.moc"
