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

class tst_Closing : public tests::ShellTest
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void opensWhereItWasClosed();
    void storesTheGeometryEvenWhenItStays();
    void asksEveryBusyPageInOrder();
    void staysWhenTheJobEndsWithTheRequest();
    void closesOnAPagesRequest();
    void removesThumbnailsThenCloses();
    void removesThumbnailsWhileAPageIsBusy();
    void staysWhenTheRemovalIsCancelled();
    void removesNothingButThumbnails();

private:
    QList<ThumbnailRemovalDialog *> removals() { return m_window->findChildren<ThumbnailRemovalDialog *>(); }
    // Three files in the real folder of the thumbnails.
    void makeThumbnails();
};

namespace
{

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

void tst_Closing::opensWhereItWasClosed()
{
    m_window->setGeometry(140, 120, 1010, 560);
    QTRY_COMPARE(m_window->geometry(), QRect(140, 120, 1010, 560));
    QVERIFY(m_window->close());
    m_window.emplace(nullptr, m_modules->table);
    QCOMPARE(m_window->geometry(), QRect(140, 120, 1010, 560));

    // Maximised: what is stored is where it goes back to.
    m_window->show();
    m_window->showMaximized();
    QTRY_VERIFY(m_window->width() > 1010);
    QVERIFY(m_window->close());
    QCOMPARE(storedGeometry().rect(), QRect(140, 120, 1010, 560));
    m_window.emplace(nullptr, m_modules->table);
    QVERIFY(m_window->isMaximized());
    settings::deleteValue(settings::keys::root, u"maximized");

    // Far above the screen: the smallest size, and a title bar within reach.
    settings::writeDword(settings::keys::root, u"posX", 5000000);
    settings::writeDword(settings::keys::root, u"width", 500);
    m_window.emplace(nullptr, m_modules->table);
    QCOMPARE(m_window->geometry(), QRect(100, 120, 986, 560));
}

void tst_Closing::storesTheGeometryEvenWhenItStays()
{
    m_window->onOpenModule(4);
    page(4)->busy = true;
    m_window->setGeometry(155, 133, 1000, 550);
    QTRY_COMPARE(m_window->geometry(), QRect(155, 133, 1000, 550));
    QVERIFY(!m_window->close());
    QCOMPARE(storedGeometry().rect(), QRect(155, 133, 1000, 550));
}

void tst_Closing::asksEveryBusyPageInOrder()
{
    const QList<int> busyOnes{15, 6, 1, 20, 3, 4, 2};
    for (const int id : busyOnes) {
        m_window->onOpenModule(id);
        page(id)->busy = true;
    }
    m_window->onOpenModule(5); // not among those that are asked
    page(5)->busy = true;
    QVERIFY(!m_window->close());
    QVERIFY(m_window->isVisible());
    QCOMPARE(m_modules->asked, (QList<int>{2, 4, 3, 20, 1, 6, 15}));
    QVERIFY(m_window->statusBar()->isVisible());
    QVERIFY(m_window->statusBar()->currentMessage().contains(u"job of 2"_s));

    // As long as any of them is.
    for (const int id : busyOnes) {
        QVERIFY(!m_window->close());
        page(id)->busy = false;
    }
    m_modules->asked.clear();
    QVERIFY(m_window->close());
    QVERIFY(m_modules->asked.isEmpty());
}

void tst_Closing::staysWhenTheJobEndsWithTheRequest()
{
    m_window->onOpenModule(2);
    page(2)->busy = true;
    page(2)->stopsAtOnce = true;
    QVERIFY(!m_window->close());
    QVERIFY(m_window->close());
}

void tst_Closing::closesOnAPagesRequest()
{
    m_window->onOpenModule(5);
    emit page(5)->closeApp();
    QVERIFY(!m_window->isVisible());
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
    QCOMPARE(dialog->findChild<QAbstractButton *>()->text(), u"Cancel"_s);
    m_window->close(); // impatient
    QCOMPARE(removals().size(), 1);

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

void tst_Closing::staysWhenTheRemovalIsCancelled()
{
    makeThumbnails();
    QVERIFY(!m_window->close());
    removals().first()->findChild<QAbstractButton *>()->click();
    QTRY_COMPARE(removals().size(), 0);
    QVERIFY(m_window->isVisible());
    QVERIFY(imaging::ThumbnailStore::produced());
    QVERIFY(!m_window->close());
    QTRY_VERIFY(!m_window->isVisible());
    QVERIFY(!QDir(thumbnailFolder()).exists());
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

QTEST_MAIN(tst_Closing)

#include "tst_closing.moc"
