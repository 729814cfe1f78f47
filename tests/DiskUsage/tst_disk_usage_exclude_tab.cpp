// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageOptionsForm.h"
#include "DiskUsage/Settings.h"
#include "app/settings/Settings.h"
#include "tests/DiskUsage/Find.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"
#include "widgets/ElidedLabel.h"

#include <QPushButton>
#include <QSemaphore>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include <atomic>
#include <memory>

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

class DiskUsageExcludeTabTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void init() { m_guard = std::make_unique<tests::RegistryGuard>(); }
    void cleanup() { m_guard.reset(); }

    void atMostTenFoldersAreExcluded();
    void aRemovedFolderStaysRemoved();
    void siblingsThatGoTooAreNamed();
    void siblingsAreLookedForOnTheScreenOnly();
    void aServerThatDoesNotAnswerHoldsNothingUp();
    void longPathsDoNotWidenTheWindow();
    void theOneDriveFolderIsOpened();

private:
    std::unique_ptr<tests::RegistryGuard> m_guard;
};

void DiskUsageExcludeTabTest::atMostTenFoldersAreExcluded()
{
    FakeDialogs dialogs;
    DiskUsageOptionsForm form;
    showTab(form);
    auto *list = find<QTreeWidget>(form, "excludeTreeWidget");
    for (int i = 0; i < 10; ++i) {
        QVERIFY(find<QPushButton>(form, "excludeAddButton")->isEnabled());
        dialogs.nextFolder.enqueue(QStringLiteral("C:\\f%1\\").arg(i));
        dialogs.nextFolder.enqueue(QStringLiteral("c:\\F%1").arg(i)); // the same folder once more
        click(form, "excludeAddButton");
        if (i < 9)
            click(form, "excludeAddButton");
        QCOMPARE(list->topLevelItemCount(), i + 1);
        dialogs.nextFolder.clear();
    }
    QVERIFY(!find<QPushButton>(form, "excludeAddButton")->isEnabled());
    QCOMPARE(list->topLevelItem(9)->text(0), QStringLiteral("C:\\f9"));
}

void DiskUsageExcludeTabTest::aRemovedFolderStaysRemoved()
{
    saveExcludedFolders(
        {{true, QStringLiteral("C:\\a")}, {false, QStringLiteral("C:\\b")}, {true, QStringLiteral("C:\\c")}});
    DiskUsageOptionsForm form;
    showTab(form);
    auto *list = find<QTreeWidget>(form, "excludeTreeWidget");
    list->setCurrentItem(list->topLevelItem(0));
    form.activateWindow(); // keys reach an active window only
    QVERIFY(QTest::qWaitForWindowActive(&form));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Delete);
    click(form, "saveButton");
    QCOMPARE(loadExcludedFolders(), std::vector<core::ExcludedFolder>(
                                        {{false, QStringLiteral("C:\\b")}, {true, QStringLiteral("C:\\c")}}));
}

void DiskUsageExcludeTabTest::siblingsThatGoTooAreNamed()
{
    const tests::TestFolder folder;
    for (const char *name : {"Data", "database", "Dat", "other"})
        folder.makeFolder(QLatin1String(name));
    folder.makeFile(QStringLiteral("Data.txt"));
    saveExcludedFolders({{true, folder.path(QStringLiteral("Data"))}});
    DiskUsageOptionsForm form;
    showTab(form);
    auto *note = find<ElidedLabel>(form, "siblingNoteLabel");
    QTRY_VERIFY(note->isVisible());
    QVERIFY(note->text().contains(folder.path(QStringLiteral("database"))));
    QVERIFY(!note->text().contains(QStringLiteral("other")));
    QVERIFY(!note->text().contains(QStringLiteral("Data.txt")));
    // A row that is not checked leaves nothing out.
    find<QTreeWidget>(form, "excludeTreeWidget")->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    QTRY_VERIFY(!note->isVisible());
}

void DiskUsageExcludeTabTest::siblingsAreLookedForOnTheScreenOnly()
{
    saveExcludedFolders({{true, QStringLiteral("C:\\a")}});
    auto asked = std::make_shared<std::atomic_int>(0);
    DiskUsageOptionsForm form([asked](const QString &folder, const core::CancelFlag &) {
        ++*asked;
        return QStringList{folder + QLatin1Char('1'), folder + QLatin1Char('2'), folder + QLatin1Char('3'),
                           folder + QLatin1Char('4'), folder + QLatin1Char('5')};
    });
    form.load();
    QTest::qWait(100);
    QCOMPARE(asked->load(), 0);
    showTab(form);
    auto *note = find<ElidedLabel>(form, "siblingNoteLabel");
    QTRY_VERIFY(note->isVisible());
    QCOMPARE(asked->load(), 1);
    QVERIFY(note->text().endsWith(QStringLiteral("C:\\a1, C:\\a2, C:\\a3 and 2 more")));
}

void DiskUsageExcludeTabTest::aServerThatDoesNotAnswerHoldsNothingUp()
{
    saveExcludedFolders({{true, QStringLiteral("C:\\a")}});
    struct Server {
        QSemaphore answers;
        std::atomic_int asked = 0;
    };
    const auto server = std::make_shared<Server>();
    auto form = std::make_unique<DiskUsageOptionsForm>([server](const QString &, const core::CancelFlag &) {
        ++server->asked;
        server->answers.acquire();
        return QStringList();
    });
    form->show();
    QTRY_COMPARE(server->asked.load(), 1);
    // Edits meanwhile do not ask again before it has answered.
    auto *list = find<QTreeWidget>(*form, "excludeTreeWidget");
    list->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    list->topLevelItem(0)->setCheckState(0, Qt::Checked);
    QTest::qWait(50);
    QCOMPARE(server->asked.load(), 1);
    server->answers.release();
    QTRY_COMPARE(server->asked.load(), 2);
    form.reset();              // would wait for ever
    server->answers.release(); // the late answer goes nowhere
    QTest::qWait(50);
}

void DiskUsageExcludeTabTest::longPathsDoNotWidenTheWindow()
{
    const QString path = QStringLiteral("C:\\") + QString(3000, QLatin1Char('w'));
    saveExcludedFolders({{true, path}});
    settings::writeString(u"Environment", u"OneDrive", path);
    DiskUsageOptionsForm form([](const QString &folder, const core::CancelFlag &) {
        return QStringList{folder + QStringLiteral(" more")};
    });
    showTab(form);
    QTRY_VERIFY(find<ElidedLabel>(form, "siblingNoteLabel")->isVisible());
    QCoreApplication::processEvents(); // the layouts around hear of the note
    const int width = form.minimumSizeHint().width();
    QVERIFY2(width < 800, qPrintable(QString::number(width)));
    settings::deleteValue(u"Environment", u"OneDrive");
}

void DiskUsageExcludeTabTest::theOneDriveFolderIsOpened()
{
    tests::FakeShell shell;
    const QString environment = QStringLiteral("Environment");
    settings::writeString(environment, u"OneDrive", u"C:\\Users\\x\\OneDrive");
    DiskUsageOptionsForm form;
    showTab(form);
    click(form, "openOneDriveButton");
    QCOMPARE(shell.opened, QStringList({QStringLiteral("C:\\Users\\x\\OneDrive")}));
    settings::deleteValue(environment, u"OneDrive");
    form.load();
    QVERIFY(!find<QPushButton>(form, "openOneDriveButton")->isEnabled());
}

QTEST_MAIN(DiskUsageExcludeTabTest)
#include "tst_disk_usage_exclude_tab.moc"
