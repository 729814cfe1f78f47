// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/GroupModel.h"
#include "core/SizeText.h"
#include "platform/FileTime.h"
#include "platform/KnownFolders.h"
#include "tests/FindDuplicate/Pages.h"
#include "tests/support/FakeFileProbe.h"
#include "tests/support/FakeShell.h"
#include "tests/support/TestPrefix.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NoticeBar.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>

using duplicates::DuplicateGroup;
using duplicates::FileRecord;
using tests::FinderScene;
using tests::inventedGroups;
using tests::makeDuplicates;
using tests::someTime;
using tests::TestFolder;

namespace
{

QString sideText(const FinderScene &scene, int row)
{
    return scene.side()->model()->index(row, 0).data().toString();
}

QStringList sideTitles(const QAbstractItemModel &model)
{
    QStringList titles;
    for (int row = 0; row < model.rowCount(); ++row)
        titles.append(model.index(row, 0).data(FileRowDelegate::TitleRole).toString());
    return titles;
}

} // namespace

class FindDuplicateResultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void init() { m_guard = std::make_unique<tests::RegistryGuard>(); }
    void cleanup() { m_guard.reset(); }

    void theToolBarIsAsAgreed();
    void rowsSayWhatTheyShould();
    void sumsUpWhatCouldBeFreed();
    void opensRevealsAndCopiesTheSelectedMember();
    void withoutASelectionNothingHappens();
    void vanishedFilesSaySo();
    void searchesAndSorts();
    void missingFilesOfManyGroupsAreFound();
    void severalMembersAreOpenedShownAndCopied();
    void comparesContents();
    void aComparisonCanBeCancelled();
    void marksOneFileUnderTwoNames();
    void remarksOnMembers();
    void marksFilesBehindALink();

private:
    std::unique_ptr<tests::RegistryGuard> m_guard;
};

void FindDuplicateResultsTest::theToolBarIsAsAgreed()
{
    const auto groups = inventedGroups(1);
    FindDuplicateResultForm page(QStringLiteral("C:\\nowhere"), groups, 0);
    QStringList buttons;
    for (const QToolButton *button : page.findChild<QToolBar *>(QStringLiteral("toolBar"))
                                         ->findChildren<QToolButton *>(Qt::FindDirectChildrenOnly))
        if (!button->objectName().startsWith(QLatin1String("qt_")))
            buttons.append(button->objectName() + u'=' + button->text());
    QCOMPARE(buttons, (QStringList{QStringLiteral("backButton=Back"), QStringLiteral("openButton=Open File"),
                                   QStringLiteral("explorerButton=Explorer"),
                                   QStringLiteral("RecycleBinButton=Move to Recycle Bin")}));
    QVERIFY(page.findChild<QLabel *>(QStringLiteral("metadataNoteLabel"))
                ->text()
                .contains(QStringLiteral("not the contents")));
    for (const char *slot : {"on_openButton_clicked()", "on_explorerButton_clicked()",
                             "on_RecycleBinButton_clicked()", "onMainResultProcessFinish()",
                             "onProcessFinish()", "onMainTreeItemChanged(QItemSelection,QItemSelection)",
                             "onItemChanged(QItemSelection,QItemSelection)"})
        QVERIFY2(page.metaObject()->indexOfSlot(slot) >= 0, slot);
}

void FindDuplicateResultsTest::rowsSayWhatTheyShould()
{
    TestFolder folder;
    makeDuplicates(folder, {QStringLiteral("sub\\a.txt"), QStringLiteral("sub\\b.txt")},
                   QByteArray(2048, 'x'));
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    const QString first = scene.form->groups()[0].members[0].name;
    QCOMPARE(sideText(scene, 0), first + QStringLiteral("\n\n") + folder.path(QStringLiteral("sub")) +
                                     QStringLiteral("\nLast Access Time: ") +
                                     platform::localFileTime(someTime).toString());
    QCOMPARE(scene.memberText(0),
             first + u'\n' + folder.path(QStringLiteral("sub")) + QStringLiteral("\nFile Size: 2.00 KB"));
    // The helper columns tell which record a row stands for, and are hidden.
    QCOMPARE(scene.side()->model()->index(0, GroupModel::GroupIndex).data().toInt(), 0);
    QCOMPARE(scene.members()->model()->index(1, MemberModel::MemberIndex).data().toInt(), 1);
    QVERIFY(scene.side()->isColumnHidden(GroupModel::GroupIndex));
    QVERIFY(!scene.members()->isColumnHidden(MemberModel::Text));
    for (const int column :
         {MemberModel::State, MemberModel::GroupIndex, MemberModel::MemberIndex, MemberModel::Path})
        QVERIFY(scene.members()->isColumnHidden(column));
    QCOMPARE(scene.members()->currentIndex().row(), 0);
    QVERIFY(scene.isEnabled("openButton") && scene.isEnabled("explorerButton") &&
            scene.isEnabled("RecycleBinButton"));
}

void FindDuplicateResultsTest::sumsUpWhatCouldBeFreed()
{
    TestFolder folder;
    makeDuplicates(folder, {QStringLiteral("a.txt"), QStringLiteral("b.txt"), QStringLiteral("c.txt")},
                   QByteArray(1024, 'x'));
    makeDuplicates(folder, {QStringLiteral("d.txt"), QStringLiteral("e.txt")}, QByteArray(3072, 'x'));
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    const QString summary = scene.find<ElidedLabel>("summaryLabel")->text();
    QVERIFY2(summary.startsWith(QStringLiteral("2 groups with 5 files")), qPrintable(summary));
    QVERIFY2(summary.contains(core::sizeText(2 * 1024 + 3072)), qPrintable(summary));
}

void FindDuplicateResultsTest::opensRevealsAndCopiesTheSelectedMember()
{
    TestFolder folder;
    makeDuplicates(folder, {QStringLiteral("a, b & c.exe"), QStringLiteral("d.exe")}, QByteArray(100, 'x'));
    tests::FakeShell shell;
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    const QString path = folder.path(QStringLiteral("a, b & c.exe"));
    scene.selectMember(scene.rowOf(path));
    QTest::mouseDClick(scene.members()->viewport(), Qt::LeftButton, {},
                       scene.members()->visualRect(scene.members()->currentIndex()).center());
    QVERIFY(shell.opened.isEmpty()); // a program must not run by a slip of the mouse
    scene.click("openButton");
    scene.click("explorerButton");
    QCOMPARE(shell.opened, QStringList{path});
    QCOMPARE(shell.revealed, QStringList{path});
    scene.members()->setFocus();
    QTest::keyClick(scene.members(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), path);
    shell.succeeds = false;
    scene.click("openButton");
    QVERIFY(scene.find<NoticeBar>("noticeBar")->text().contains(path));
}

void FindDuplicateResultsTest::withoutASelectionNothingHappens()
{
    const auto groups = inventedGroups(1);
    tests::FakeShell shell;
    FindDuplicateResultForm page(QStringLiteral("C:\\nowhere"), groups, 0);
    page.on_openButton_clicked();
    page.on_explorerButton_clicked();
    page.on_RecycleBinButton_clicked();
    QVERIFY(shell.opened.isEmpty() && shell.revealed.isEmpty());
    QVERIFY(!page.isBusy());
}

void FindDuplicateResultsTest::vanishedFilesSaySo()
{
    const QString moved = QStringLiteral("The file was moved to another location");
    TestFolder folder;
    makeDuplicates(folder, {QStringLiteral("a.txt"), QStringLiteral("b.txt"), QStringLiteral("c.txt")},
                   QByteArray(100, 'x'));
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    const QString first = scene.memberPath(0);
    tests::requireBelow(folder.path(), first);
    QVERIFY(QFile::remove(first));
    QVERIFY(scene.memberText(0) != moved);
    scene.members()->setFocus();
    QTest::keyClick(scene.members(), Qt::Key_F5);
    QTRY_COMPARE(scene.memberText(0), moved);
    QTRY_COMPARE(sideText(scene, 0), moved);
    QVERIFY(scene.memberText(1) != moved);
}

void FindDuplicateResultsTest::searchesAndSorts()
{
    const quint64 kb = 1024;
    const auto file = [&](const char *name, const char *folder, quint64 size) {
        return FileRecord{QLatin1String(name), QLatin1String(folder), size, 0, 0, someTime};
    };
    const auto groups = std::make_shared<FindDuplicateResultForm::Groups>(FindDuplicateResultForm::Groups{
        {{file("m.jpg", "C:\\b", 9 * kb), file("Holiday.jpg", "C:\\a", 9 * kb)}, 9 * kb},
        {{file("z.jpg", "C:\\c", 5 * kb), file("z2.jpg", "C:\\c", 5 * kb), file("z3.jpg", "C:\\c", 5 * kb)},
         5 * kb},
        {{file("A.jpg", "C:\\D", kb), file("holiday (2).jpg", "C:\\a", kb)}, kb},
    });
    FindDuplicateResultForm page(QStringLiteral("C:\\"), groups, 0);
    QSignalSpy ready(&page, &FindDuplicateResultForm::resultReady);
    QVERIFY(page.start());
    QVERIFY(ready.wait());
    const QAbstractItemModel &side = *page.findChild<QTreeView *>(QStringLiteral("sideTreeView"))->model();
    // Without their files the titles tell nothing: the paths do.
    const auto paths = [&] {
        QStringList found;
        for (int row = 0; row < side.rowCount(); ++row)
            found.append(side.index(row, 0).data(Qt::ToolTipRole).toString());
        return found.join(QLatin1Char(' '));
    };
    auto *order = page.findChild<QComboBox *>(QStringLiteral("orderComboBox"));
    const QStringList expected{
        QStringLiteral("C:\\b\\m.jpg C:\\c\\z.jpg C:\\D\\A.jpg"), // largest file
        QStringLiteral("C:\\c\\z.jpg C:\\b\\m.jpg C:\\D\\A.jpg"), // most to free
        QStringLiteral("C:\\c\\z.jpg C:\\b\\m.jpg C:\\D\\A.jpg"), // most files
        QStringLiteral("C:\\D\\A.jpg C:\\b\\m.jpg C:\\c\\z.jpg"), // name
        QStringLiteral("C:\\b\\m.jpg C:\\c\\z.jpg C:\\D\\A.jpg"), // folder
    };
    QCOMPARE(order->count(), expected.size());
    for (int i = 0; i < order->count(); ++i) {
        order->setCurrentIndex(i);
        emit order->activated(i);
        QCOMPARE(paths(), expected[i]);
    }
    // A member that has gone frees nothing any more.
    (*groups)[1].members[0].moved = (*groups)[1].members[1].moved = true;
    order->setCurrentIndex(1);
    emit order->activated(1);
    QCOMPARE(paths(), QStringLiteral("C:\\b\\m.jpg C:\\D\\A.jpg C:\\c\\z.jpg"));
    order->setCurrentIndex(0);
    emit order->activated(0);
    auto *search = page.findChild<QLineEdit *>(QStringLiteral("searchLineEdit"));
    search->setText(QStringLiteral("OLIDAY")); // of any member
    QTRY_COMPARE(paths(), QStringLiteral("C:\\b\\m.jpg C:\\D\\A.jpg"));
    search->setText(QStringLiteral("nowhere to be found"));
    QTRY_COMPARE(side.rowCount(), 0);
    search->clear();
    QTRY_COMPARE(side.rowCount(), 3);
}

void FindDuplicateResultsTest::missingFilesOfManyGroupsAreFound()
{
    FindDuplicateResultForm page(QStringLiteral("C:\\nowhere"), inventedGroups(5'000), 0);
    QSignalSpy ready(&page, &FindDuplicateResultForm::resultReady);
    QVERIFY(page.start());
    QVERIFY(ready.wait());
    auto *side = page.findChild<QTreeView *>(QStringLiteral("sideTreeView"));
    side->setCurrentIndex(side->model()->index(4'999, 0));
    auto *members = page.findChild<QTreeView *>(QStringLiteral("mainTreeView"));
    QTRY_COMPARE(members->model()->index(1, MemberModel::Path).data().toString(),
                 QStringLiteral("C:\\nowhere\\99\\copy 4999.jpg"));
    // None of the files is there, which the list finds out by itself behind the user's back.
    QTRY_COMPARE_WITH_TIMEOUT(
        sideTitles(*side->model()).count(QStringLiteral("The file was moved to another location")), 5'000,
        60'000);
}

void FindDuplicateResultsTest::comparesContents()
{
    TestFolder folder;
    // More than the comparison reads at once, with the difference behind that.
    const QByteArray content(1'500'000, 'x');
    QByteArray different = content;
    different.back() = 'y';
    makeDuplicates(folder, {QStringLiteral("1.txt"), QStringLiteral("2.txt"), QStringLiteral("3.txt")},
                   content);
    makeDuplicates(folder, {QStringLiteral("4.txt")}, different);
    tests::FakeFileProbe probe;
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    scene.click("compareButton");
    QVERIFY(scene.form->isBusy());
    QVERIFY(!scene.isEnabled("RecycleBinButton"));
    QTRY_VERIFY(!scene.form->isBusy());
    QVERIFY(scene.isEnabled("RecycleBinButton"));
    const auto badges = [&] {
        QStringList all;
        for (int row = 0; row < 4; ++row)
            all.append(scene.badges(row).first());
        return all;
    };
    QCOMPARE(badges(),
             (QStringList{QStringLiteral("compared with this one"), QStringLiteral("identical to the first"),
                          QStringLiteral("identical to the first"), QStringLiteral("different content")}));
    // Where the first one must not be opened, another one takes its place.
    probe.setAttributes(folder.path(QStringLiteral("1.txt")), core::AttributeOffline);
    scene.click("compareButton");
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(
        badges(),
        (QStringList{QStringLiteral("in the cloud, not opened"), QStringLiteral("compared with this one"),
                     QStringLiteral("identical to row 2"), QStringLiteral("different content")}));
}

void FindDuplicateResultsTest::aComparisonCanBeCancelled()
{
    TestFolder folder;
    for (const char *name : {"a.txt", "b.txt"}) {
        folder.makeLargeFile(QLatin1String(name), quint64{4} << 30);
        folder.setTimes(QLatin1String(name), someTime, someTime);
    }
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    scene.click("compareButton");
    QVERIFY(scene.find<QProgressBar>("compareProgressBar")->isVisible());
    scene.click("compareCancelButton");
    QTRY_VERIFY(!scene.form->isBusy());
    QVERIFY(!scene.badges(1).contains(QStringLiteral("identical to the first")));
    QVERIFY(!scene.find<QProgressBar>("compareProgressBar")->isVisible());
    // The page may also be left while it runs.
    scene.click("compareButton");
    scene.click("backButton");
    QTRY_VERIFY(!scene.form->isBusy());
    QVERIFY(scene.find<QPushButton>("selectFolderButton")->isVisible());
}

void FindDuplicateResultsTest::marksOneFileUnderTwoNames()
{
    TestFolder folder;
    makeDuplicates(folder, {QStringLiteral("a.txt")}, QByteArray(100, 'x'));
    folder.makeHardLink(QStringLiteral("b.txt"), QStringLiteral("a.txt"));
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    for (const int row : {0, 1})
        QVERIFY(scene.badges(row).contains(QStringLiteral("last copy")));
    QVERIFY(scene.badges(1).contains(QStringLiteral("hard link to the file of row 1")));
    for (const int row : {0, 1})
        QVERIFY(!scene.badges(row).contains(QStringLiteral("proposed to keep"))); // nothing to choose from
}

void FindDuplicateResultsTest::remarksOnMembers()
{
    const platform::KnownFolder windowsId = platform::KnownFolder::Windows;
    const platform::KnownFolder programsId = platform::KnownFolder::ProgramFiles;
    const auto file = [](const QString &folder, quint64 created) {
        return FileRecord{QStringLiteral("a.txt"), folder, 100, someTime, created, someTime};
    };
    DuplicateGroup group{{file(platform::knownFolder(windowsId).toUpper() + QStringLiteral("\\sub"), 5),
                          file(platform::knownFolder(programsId), 4),
                          file(platform::knownFolder(windowsId) + QStringLiteral(" of a house"), 3)},
                         100};
    const duplicates::MemberFacts there{{true, false, -1}, std::nullopt};
    MemberModel model;
    model.setGroup(&group, 0, {there, there, there});
    const auto badges = [&] {
        QStringList all;
        for (int row = 0; row < 3; ++row)
            all.append(model.index(row, 0).data(Qt::ToolTipRole).toString().section(u'\n', 1));
        return all;
    };
    QCOMPARE(badges(),
             (QStringList{QStringLiteral("belongs to Windows"), QStringLiteral("belongs to a program"),
                          QStringLiteral("proposed to keep")}));
    group.members[2].checked = group.members[2].moved = true;
    model.setFacts({there, there, {}});
    QCOMPARE(badges(), (QStringList{QStringLiteral("belongs to Windows"),
                                    QStringLiteral("belongs to a program\nproposed to keep"),
                                    QStringLiteral("moved to the recycle bin")}));
}

void FindDuplicateResultsTest::marksFilesBehindALink()
{
    TestFolder folder;
    makeDuplicates(folder, {QStringLiteral("d\\a.txt")}, QByteArray(100, 'x'));
    folder.makeLink(QStringLiteral("j"), QStringLiteral("d"));
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    const int real = scene.rowOf(folder.path(QStringLiteral("d\\a.txt")));
    QVERIFY(real >= 0);
    QVERIFY(scene.badges(real).contains(QStringLiteral("last copy")));
    QVERIFY(!scene.badges(real).contains(QStringLiteral("reached through a link")));
    QVERIFY(scene.badges(1 - real).contains(QStringLiteral("reached through a link")));
    QVERIFY(scene.badges(1).contains(QStringLiteral("same file as row 1")));
}

void FindDuplicateResultsTest::severalMembersAreOpenedShownAndCopied()
{
    TestFolder folder;
    QStringList names;
    for (int i = 0; i < 12; ++i)
        names.append(QStringLiteral("%1\\%2.txt").arg(i / 6).arg(i, 2, 10, QLatin1Char('0')));
    makeDuplicates(folder, names, QByteArray(100, 'x'));
    tests::FakeShell shell;
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    QStringList paths;
    for (const QString &name : std::as_const(names))
        paths.append(folder.path(name));
    // From the last row upwards: what is done follows the list.
    scene.members()->setFocus();
    scene.selectMember(11);
    for (int row = 10; row >= 8; --row)
        QTest::keyClick(scene.members(), Qt::Key_Up, Qt::ShiftModifier);
    scene.click("openButton");
    QCOMPARE(shell.opened, paths.mid(8));
    QTest::keyClick(scene.members(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), paths.mid(8).join(u'\n'));
    // One at a time is removed.
    QVERIFY(!scene.isEnabled("RecycleBinButton"));
    QTest::keyClick(scene.members(), Qt::Key_Delete);
    QVERIFY(!scene.form->isBusy());
    // A window a folder, and no more programs than a person meant to start.
    QTest::keyClick(scene.members(), Qt::Key_A, Qt::ControlModifier);
    scene.click("explorerButton");
    QCOMPARE(shell.revealed, (QStringList{paths[0], paths[6]}));
    shell.opened.clear();
    scene.click("openButton");
    QCOMPARE(shell.opened, paths.first(10));
    QVERIFY(scene.find<NoticeBar>("noticeBar")->text().contains(QStringLiteral("10 of the 12")));
    scene.selectMember(0);
    QVERIFY(scene.isEnabled("RecycleBinButton"));
}

QTEST_MAIN(FindDuplicateResultsTest)

#include "tst_find_duplicate_results.moc"
