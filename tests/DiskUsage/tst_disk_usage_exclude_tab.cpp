// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageOptionsForm.h"
#include "DiskUsage/Settings.h"
#include "settings/Settings.h"
#include "tests/DiskUsage/Find.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"
#include "widgets/ElidedLabel.h"

#include <QPushButton>
#include <QSemaphore>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include <atomic>
#include <memory>

using namespace Qt::StringLiterals;
using namespace diskusage;
using tests::click;
using tests::FakeDialogs;
using tests::find;

namespace
{

void showTab(DiskUsageOptionsForm &form)
{
    form.show();
    find<QTabWidget>(form, "optionsTabWidget")->setCurrentIndex(1);
}

} // namespace

class DiskUsageExcludeTabTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void atMostTenFoldersAreExcluded();
    void aRemovedFolderStaysRemoved();
    void siblingsThatGoTooAreNamed();
    void siblingsAreLookedForOnTheScreenOnly();
    void aServerThatDoesNotAnswerHoldsNothingUp();
    void theOneDriveFolderIsOpened();
};

void DiskUsageExcludeTabTest::atMostTenFoldersAreExcluded()
{
    FakeDialogs dialogs;
    DiskUsageOptionsForm form;
    showTab(form);
    auto *list = find<QTreeWidget>(form, "excludeTreeWidget");
    const auto add = [&](const QString &folder) {
        dialogs.nextFolder.enqueue(folder);
        click(form, "excludeAddButton");
    };
    for (int i = 0; i < 9; ++i)
        add(u"C:\\f%1\\"_s.arg(i));
    add(u"c:\\F0"_s); // the same folder once more
    QCOMPARE(list->topLevelItemCount(), 9);
    add(u"C:\\f9\\"_s);
    QCOMPARE(list->topLevelItem(9)->text(0), u"C:\\f9"_s);
    QVERIFY(!find<QPushButton>(form, "excludeAddButton")->isEnabled());
}

void DiskUsageExcludeTabTest::aRemovedFolderStaysRemoved()
{
    saveExcludedFolders({{true, u"C:\\a"_s}, {false, u"C:\\b"_s}, {true, u"C:\\c"_s}});
    DiskUsageOptionsForm form;
    showTab(form);
    auto *list = find<QTreeWidget>(form, "excludeTreeWidget");
    list->setCurrentItem(list->topLevelItem(0));
    form.activateWindow(); // keys reach an active window only
    QVERIFY(QTest::qWaitForWindowActive(&form));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Delete);
    click(form, "saveButton");
    QCOMPARE(loadExcludedFolders(),
             std::vector<core::ExcludedFolder>({{false, u"C:\\b"_s}, {true, u"C:\\c"_s}}));
}

void DiskUsageExcludeTabTest::siblingsThatGoTooAreNamed()
{
    const tests::TestFolder folder;
    for (const char *name : {"Data", "database", "Dat", "other"})
        folder.makeFolder(QLatin1String(name));
    folder.makeFile(u"Data.txt"_s);
    saveExcludedFolders({{true, folder.path(u"Data"_s)}});
    DiskUsageOptionsForm form;
    showTab(form);
    auto *note = find<ElidedLabel>(form, "siblingNoteLabel");
    QTRY_VERIFY(note->isVisible());
    QVERIFY(note->text().contains(folder.path(u"database"_s)));
    QVERIFY(!note->text().contains(u"other"_s));
    QVERIFY(!note->text().contains(u"Data.txt"_s));
    // A row that is not checked leaves nothing out.
    find<QTreeWidget>(form, "excludeTreeWidget")->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    QTRY_VERIFY(!note->isVisible());
}

void DiskUsageExcludeTabTest::siblingsAreLookedForOnTheScreenOnly()
{
    saveExcludedFolders({{true, u"C:\\a"_s}});
    auto asked = std::make_shared<std::atomic_int>(0);
    DiskUsageOptionsForm form(
        [asked](const QString &, core::DirectoryEnumerator &, const core::CancelFlag &) {
            ++*asked;
            return QStringList{u"C:\\a1"_s, u"C:\\a2"_s, u"C:\\a3"_s, u"C:\\a4"_s, u"C:\\a5"_s};
        });
    form.load();
    QTest::qWait(100);
    QCOMPARE(asked->load(), 0);
    showTab(form);
    auto *note = find<ElidedLabel>(form, "siblingNoteLabel");
    QTRY_VERIFY(note->isVisible());
    QCOMPARE(asked->load(), 1);
    QVERIFY(note->text().endsWith(u"C:\\a1, C:\\a2, C:\\a3 and 2 more"_s));
    // No disk is asked again for moving in a list.
    auto *list = find<QTreeWidget>(form, "excludeTreeWidget");
    list->setCurrentItem(nullptr);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::qWait(100);
    QCOMPARE(asked->load(), 1);
}

void DiskUsageExcludeTabTest::aServerThatDoesNotAnswerHoldsNothingUp()
{
    saveExcludedFolders({{true, u"C:\\a"_s}});
    struct Server {
        QSemaphore answers;
        std::atomic_int asked = 0;
    };
    const auto server = std::make_shared<Server>();
    auto form = std::make_unique<DiskUsageOptionsForm>(
        [server](const QString &, core::DirectoryEnumerator &, const core::CancelFlag &) {
            ++server->asked;
            server->answers.acquire();
            return QStringList();
        });
    form->show();
    QTRY_COMPARE(server->asked.load(), 1);
    // Edits meanwhile do not leave a thread behind each.
    auto *list = find<QTreeWidget>(*form, "excludeTreeWidget");
    for (int edit = 0; edit < 10; ++edit) {
        list->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
        list->topLevelItem(0)->setCheckState(0, Qt::Checked);
        QTest::qWait(10);
    }
    QVERIFY(server->asked.load() <= core::LatestAnswer::maxHanging);
    form.reset();                // would wait for ever
    server->answers.release(10); // the late answers go nowhere
    QTest::qWait(50);
}

void DiskUsageExcludeTabTest::theOneDriveFolderIsOpened()
{
    tests::FakeShell shell;
    const QString environment = u"Environment"_s;
    settings::writeString(environment, u"OneDrive", u"C:\\Users\\x\\OneDrive");
    DiskUsageOptionsForm form;
    showTab(form);
    click(form, "openOneDriveButton");
    QCOMPARE(shell.opened, QStringList({u"C:\\Users\\x\\OneDrive"_s}));
    settings::deleteValue(environment, u"OneDrive");
    form.load();
    QVERIFY(!find<QPushButton>(form, "openOneDriveButton")->isEnabled());
}

QTEST_MAIN(DiskUsageExcludeTabTest)
#include "tst_disk_usage_exclude_tab.moc"
