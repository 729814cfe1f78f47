// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/TroubleshooterForm.h"
#include "Troubleshooter/machine/WindowsExplorer.h"
#include "Troubleshooter/machine/WindowsTools.h"
#include "tests/Troubleshooter/engine/FakeWorld.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"
#include "widgets/NoticeBar.h"
#include "widgets/WrappedLabel.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

using namespace repair;
using namespace Qt::StringLiterals;

class TroubleshooterTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void doesOnlyWhatIsChosen();
    void endsWithItsWindow();
    void erasesCachesAlone();
    void runsToolsOfWindows();
};

void TroubleshooterTest::doesOnlyWhatIsChosen()
{
    const auto network = std::make_shared<tests::FakeNetwork>();
    const auto tools = std::make_shared<tests::FakeTools>();
    network->lookup.answered = false;
    TroubleshooterForm form({network, tools, std::make_shared<tests::FakeCaches>(),
                             std::make_shared<tests::FakeExplorer>(), std::make_shared<tests::FakeStore>()},
                            nullptr);
    form.show();
    auto *page = form.findChild<QWidget *>(u"internetPage"_s);
    auto *apply = page->findChild<QPushButton *>(u"applyButton"_s);
    QVERIFY(!apply->isVisible());
    auto *check = page->findChild<QPushButton *>(u"checkButton"_s);
    check->click();
    page->findChild<QPushButton *>(u"cancelButton"_s)->click();
    QTRY_VERIFY(check->isEnabled());
    QCOMPARE(page->findChild<QLabel *>(u"statusLabel"_s)->text(), u"Not checked yet."_s);
    check->click();
    QTRY_VERIFY(apply->isVisible());
    QVERIFY(page->findChild<NoticeBar *>()->text().contains(u"2 problems"_s));
    for (const QCheckBox *box : page->findChildren<QCheckBox *>())
        QVERIFY2(!box->isChecked(), qPrintable(box->text()));
    QVERIFY(!apply->isEnabled());

    page->findChild<QCheckBox *>(u"flushCheckBox"_s)->click();
    QVERIFY(apply->isEnabled());
    network->lookup.answered = true;
    apply->click();
    QTRY_VERIFY(page->findChild<WrappedLabel *>(u"flushOutcomeLabel"_s));
    QCOMPARE(tools->ran, QList<Tool>{Tool::FlushDns});
    QTRY_VERIFY(page->findChild<NoticeBar *>()->text().contains(u"No problem"_s));
    QVERIFY(!apply->isEnabled()); // chosen for once
}

void TroubleshooterTest::endsWithItsWindow()
{
    const auto explorer = std::make_shared<tests::FakeExplorer>();
    const auto caches = std::make_shared<tests::FakeCaches>();
    {
        TroubleshooterForm form({std::make_shared<tests::FakeNetwork>(), std::make_shared<tests::FakeTools>(),
                                 caches, explorer, std::make_shared<tests::FakeStore>()},
                                nullptr);
        form.findChild<QTabWidget *>()->setCurrentIndex(1);
        form.show();
        auto *page = form.findChild<QWidget *>(u"iconsPage"_s);
        page->findChild<QPushButton *>(u"checkButton"_s)->click();
        QTRY_VERIFY(page->findChild<QCheckBox *>());
        page->findChild<QCheckBox *>()->click();
        page->findChild<QPushButton *>(u"applyButton"_s)->click();
    }
    QVERIFY(explorer->running);
}

void TroubleshooterTest::erasesCachesAlone()
{
    const tests::TestFolder folder;
    const QString explorer = u"Microsoft\\Windows\\Explorer\\"_s;
    const QString icons = folder.makeFile(explorer + u"iconcache_32.db"_s, "12");
    const QString thumbnails = folder.makeFile(explorer + u"ThumbCache_256.DB"_s, "345");
    const QString other = folder.makeFile(explorer + u"thumbcache_notes.txt"_s);
    const QString old = folder.makeFile(u"IconCache.db"_s, "6");
    WindowsCaches caches(folder.path());
    QCOMPARE(caches.list(CacheKind::Icons)->size(), 2);
    const QList<CacheFile> files = caches.list(CacheKind::Thumbnails).value();
    QCOMPARE(files.size(), 1);
    QVERIFY(files[0].path == thumbnails && files[0].size == 3);
    CacheFile changed = files[0];
    changed.size = 4;
    QVERIFY(!caches.erase(changed).isEmpty() && QFile::exists(thumbnails));
    QCOMPARE(caches.erase(files[0]), QString());
    QVERIFY(!QFile::exists(thumbnails) && QFile::exists(other) && QFile::exists(icons) && QFile::exists(old));
    QCOMPARE(WindowsCaches(folder.path(u"new"_s)).list(CacheKind::Icons)->size(), 0);
}

void TroubleshooterTest::runsToolsOfWindows()
{
    const tests::TestFolder folder;
    const core::CancelFlag never;
    WindowsTools tools;
    // Wine has this one, and the key.
    const QString path = folder.path(u"new\\sockets.reg"_s);
    QVERIFY(tools.run(Tool::SaveSockets, path, never).succeeded());
    QVERIFY(tools.holdsSomething(path));
    QVERIFY(!tools.save(path, "other"));
    QVERIFY(tools.save(folder.path(u"new\\other.txt"_s), "x"));
    QVERIFY(!tools.save(folder.path(u"empty.txt"_s), {}));
}

QTEST_MAIN(TroubleshooterTest)
#include "tst_troubleshooter.moc"
