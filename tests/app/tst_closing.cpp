// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ThumbnailRemovalDialog.h"
#include "app/WindowGeometry.h"
#include "imaging/engine/ThumbnailStore.h"
#include "settings/Keys.h"
#include "settings/Settings.h"
#include "tests/app/ShellTest.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QStatusBar>
#include <QTemporaryDir>

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

QString thumbnailFolder()
{
    return imaging::ThumbnailStore::folder(QDir::tempPath());
}

void writeFile(const QString &path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("x");
}

} // namespace

class tst_Closing : public tests::ShellTest
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fits_data();
    void fits();
    void comesIntoView();
    void opensWhereItWasClosed();
    void asksEveryBusyPageInOrder();
    void removesThumbnailsThenCloses();
    void removesThumbnailsWhileAPageIsBusy();
    void removesNothingButThumbnails();
    void clearsAtStartWhatACrashLeft();

private:
    QList<ThumbnailRemovalDialog *> removals() { return m_window->findChildren<ThumbnailRemovalDialog *>(); }
    // Three files in the real folder of the thumbnails.
    void makeThumbnails();
};

void tst_Closing::init()
{
    openShell();
    QDir(thumbnailFolder()).removeRecursively();
}

void tst_Closing::cleanup()
{
    closeShell();
    imaging::ThumbnailStore::noteRemoved();
}

void tst_Closing::makeThumbnails()
{
    QVERIFY(QDir().mkpath(thumbnailFolder()));
    tests::requireBelow(QDir::tempPath() + u"/Fernlight Larkspur"_s, thumbnailFolder());
    for (int i = 0; i < 3; ++i)
        writeFile(thumbnailFolder() + u"/%1.png"_s.arg(i));
    imaging::ThumbnailStore::noteProduced();
}

void tst_Closing::fits_data()
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

void tst_Closing::fits()
{
    QFETCH(const WindowGeometry, stored);
    QFETCH(const quint32, cx);
    QFETCH(const quint32, cy);
    QFETCH(const WindowGeometry, expected);
    QCOMPARE(fitted(stored, cx, cy), expected);
}

// Two screens side by side, the left one lower; a title bar of 30.
void tst_Closing::comesIntoView()
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

    struct Row {
        const char *name;
        QRect content;
        bool elsewhere;
    };
    for (const Row &row : {Row{"all of it on the other screen", {-1020, 230, 986, 513}, true},
                           {"smaller than it may be", {-1020, 230, 985, 513}, false},
                           {"one pixel over the far edge", {-1025, 230, 986, 513}, true},
                           {"one pixel over the upper edge", {-1020, 229, 986, 513}, true},
                           {"across two, most of it on the other", {-600, 300, 986, 513}, true},
                           {"across two, most of it at home", {-400, 300, 986, 513}, false},
                           {"its title bar above the other screen", {-1020, 200, 986, 513}, false},
                           {"on a screen that is gone", {-3000, 300, 986, 513}, false}})
        QVERIFY2(isElsewhere(row.content, 30, screens.at(0), {screens.at(1)}) == row.elsewhere, row.name);
}

void tst_Closing::opensWhereItWasClosed()
{
    m_window->setGeometry(140, 120, 1010, 560);
    QTRY_COMPARE(m_window->geometry(), QRect(140, 120, 1010, 560));
    QVERIFY(m_window->close());
    m_window.emplace(nullptr, m_modules->table);
    QCOMPARE(m_window->geometry(), QRect(140, 120, 1010, 560));

    // Left of the first screen a position is a negative number.
    storeGeometry(WindowGeometry::of(QRect(-300, -7, 1200, 700)));
    QCOMPARE(storedGeometry().rect(), QRect(-300, -7, 1200, 700));
    m_window->show();
    m_window->setGeometry(140, 120, 1010, 560);
    QTRY_COMPARE(m_window->geometry(), QRect(140, 120, 1010, 560));

    // Maximised: what is stored is where it goes back to.
    m_window->showMaximized();
    QTRY_VERIFY(m_window->width() > 1010);
    QVERIFY(m_window->close());
    QCOMPARE(storedGeometry().rect(), QRect(140, 120, 1010, 560));
    m_window.emplace(nullptr, m_modules->table);
    QVERIFY(m_window->isMaximized());
    settings::deleteValue(settings::keys::root, u"maximized");

    // Far above the screen: the smallest size, and a title bar within reach.
    settings::writeDword(settings::keys::root, u"posX", 5000000);
    settings::writeString(settings::keys::root, u"width", u"500"); // no number: as if it were absent
    m_window.emplace(nullptr, m_modules->table);
    QCOMPARE(m_window->geometry(), QRect(100, 120, 986, 560));
}

void tst_Closing::asksEveryBusyPageInOrder()
{
    const QList<int> busyOnes{17, 5, 15, 6, 1, 20, 3, 4, 2};
    for (const int id : busyOnes) {
        m_window->onOpenModule(id);
        page(id)->busy = true;
    }
    QVERIFY(!m_window->close());
    QVERIFY(m_window->isVisible());
    QCOMPARE(m_modules->asked, (QList<int>{2, 4, 3, 20, 1, 6, 15, 5, 17}));
    QVERIFY(m_window->statusBar()->isVisible());
    QVERIFY(m_window->statusBar()->currentMessage().contains(u"job of 2"_s));
    QVERIFY(m_window->statusBar()->currentMessage().contains(u"The window closes when it has ended."_s));

    // As long as any of them is.
    for (const int id : busyOnes) {
        QVERIFY(!m_window->close());
        page(id)->busy = false;
    }
    // One whose job ends with the request keeps the window this once.
    page(2)->busy = page(2)->stopsAtOnce = true;
    m_window->setGeometry(155, 133, 1000, 550);
    QTRY_COMPARE(m_window->geometry(), QRect(155, 133, 1000, 550));
    QVERIFY(!m_window->close());
    QCOMPARE(storedGeometry().rect(), QRect(155, 133, 1000, 550)); // stored all the same
    m_modules->asked.clear();
    emit page(5)->closeApp();
    QVERIFY(!m_window->isVisible());
    QVERIFY(m_modules->asked.isEmpty());
    QCOMPARE(m_log->count(u"removeThumbnailsDialog"_s), 0);
}

void tst_Closing::removesThumbnailsThenCloses()
{
    makeThumbnails();
    QVERIFY(!m_window->close());
    QCOMPARE(removals().size(), 1);
    ThumbnailRemovalDialog *dialog = removals().first();
    QVERIFY(dialog->isModal());
    QCOMPARE(dialog->findChild<QLabel *>()->text(),
             u"The program removing unused thumbnail files. Please wait..."_s);
    m_window->close(); // impatient
    QCOMPARE(removals().size(), 1);
    dialog->findChild<QAbstractButton *>()->click(); // "Cancel": the window stays
    QTRY_COMPARE(removals().size(), 0);
    QVERIFY(m_window->isVisible() && imaging::ThumbnailStore::produced());

    QVERIFY(!m_window->close());
    QTRY_VERIFY(!m_window->isVisible());
    QTRY_COMPARE(removals().size(), 0);
    QCOMPARE(m_log->count(u"removeThumbnailsDialog"_s), 1);
    QVERIFY(!imaging::ThumbnailStore::produced());
    QVERIFY(!QDir(thumbnailFolder()).exists());
}

void tst_Closing::removesThumbnailsWhileAPageIsBusy()
{
    makeThumbnails();
    m_window->onOpenModule(20);
    page(20)->busy = true;
    QVERIFY(!m_window->close());
    QCOMPARE(m_modules->asked.size(), 1);
    QCOMPARE(removals().size(), 1);

    // The removal closes the window once more, which stays because of the page, and asks for no second one.
    QTRY_COMPARE(removals().size(), 0);
    QCOMPARE(m_modules->asked.size(), 2);
    QVERIFY(m_window->isVisible());
    QVERIFY(!QDir(thumbnailFolder()).exists());
    QVERIFY(!m_window->close());
    QCOMPARE(removals().size(), 0);

    // One that has stopped meanwhile keeps the window no longer.
    makeThumbnails();
    QVERIFY(!m_window->close());
    page(20)->busy = false;
    QTRY_VERIFY(!m_window->isVisible());
}

void tst_Closing::removesNothingButThumbnails()
{
    const QTemporaryDir temporary;
    const QString root = temporary.path();
    const QString folder = imaging::ThumbnailStore::folder(root);
    QVERIFY(QDir().mkpath(folder + u"/sub"_s));
    tests::requireBelow(root, folder);
    writeFile(folder + u"/a.png"_s);
    writeFile(folder + u"/b"_s);
    writeFile(folder + u"/sub/kept.png"_s);
    writeFile(folder + u"/../kept.png"_s);
    const core::CancelFlag cancel;
    QCOMPARE(removeThumbnails(root, cancel), 2);
    QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), tests::strings({"sub"}));
    QVERIFY(QFile::exists(folder + u"/sub/kept.png"_s));
    QVERIFY(QFile::exists(folder + u"/../kept.png"_s));
    QCOMPARE(removeThumbnails(root + u"/nowhere"_s, cancel), 0);

    writeFile(folder + u"/c.png"_s);
    core::CancelFlag cancelled;
    cancelled.set();
    QCOMPARE(removeThumbnails(root, cancelled), 0);
    QVERIFY(QFile::exists(folder + u"/c.png"_s));
}

void tst_Closing::clearsAtStartWhatACrashLeft()
{
    const QString left = thumbnailFolder() + u"/Lookalikes-1.thumbnails"_s;
    QVERIFY(QDir().mkpath(thumbnailFolder()));
    writeFile(left);
    QList<Module> rows = m_modules->table.rows();
    for (Module &module : rows) {
        if (module.id == 20)
            module.atStart = moduleTable().find(20)->atStart;
    }
    const ModuleTable table(rows);
    openWindow(table);
    QTRY_VERIFY(!QFile::exists(left));
    m_window.reset(); // before the table
}

QTEST_MAIN(tst_Closing)

#include "tst_closing.moc"
