// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/GroupModel.h"
#include "core/SizeText.h"
#include "platform/FileTime.h"
#include "platform/KnownFolders.h"
#include "tests/FindDuplicate/Pages.h"
#include "tests/support/FakeFileProbe.h"
#include "tests/support/FakeShell.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NoticeBar.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace tests;
using duplicates::DuplicateGroup;
using duplicates::FileRecord;

namespace
{

// Counts the rows that the view has measured.
class CountingDelegate : public FileRowDelegate
{
public:
    using FileRowDelegate::FileRowDelegate;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        ++measured;
        return FileRowDelegate::sizeHint(option, index);
    }
    mutable int measured = 0;
};

} // namespace

class FindDuplicateResultsTest : public QObject
{
    Q_OBJECT

private slots:
    void theToolBarIsAsAgreed();
    void rowsSayWhatTheyShould();
    void searchesAndSorts();
    void aLongListOpensLikeAShortOne();
    void severalMembersAreOpenedShownAndCopied();
    void comparesContents();
    void remarksOnMembers();
};

void FindDuplicateResultsTest::theToolBarIsAsAgreed()
{
    const auto groups = inventedGroups(1);
    FindDuplicateResultForm page(u"C:\\nowhere"_s, groups, 0);
    QStringList buttons;
    for (const QToolButton *button :
         page.findChild<QToolBar *>(u"toolBar"_s)->findChildren<QToolButton *>(Qt::FindDirectChildrenOnly))
        if (!button->objectName().startsWith(QLatin1String("qt_")))
            buttons.append(button->objectName() + u'=' + button->text());
    QCOMPARE(buttons, (QStringList{u"backButton=Back"_s, u"openButton=Open File"_s,
                                   u"explorerButton=Explorer"_s, u"RecycleBinButton=Move to Recycle Bin"_s}));
    const QString compare = page.findChild<QAbstractButton *>(u"compareButton"_s)->text();
    QCOMPARE(compare, u"Compare contents"_s);
    const QString note = page.findChild<QLabel *>(u"metadataNoteLabel"_s)->text();
    QVERIFY(note.contains(u"not the contents: \"%1\""_s.arg(compare)));
    for (const char *slot : {"on_openButton_clicked()", "on_explorerButton_clicked()",
                             "on_RecycleBinButton_clicked()", "onMainResultProcessFinish()",
                             "onProcessFinish()", "onMainTreeItemChanged(QItemSelection,QItemSelection)",
                             "onItemChanged(QItemSelection,QItemSelection)"})
        QVERIFY2(page.metaObject()->indexOfSlot(slot) >= 0, slot);
    // Nothing is selected yet.
    FakeShell shell;
    page.on_openButton_clicked();
    page.on_explorerButton_clicked();
    page.on_RecycleBinButton_clicked();
    QVERIFY(shell.opened.isEmpty() && shell.revealed.isEmpty());
    QVERIFY(!page.isBusy());
}

void FindDuplicateResultsTest::rowsSayWhatTheyShould()
{
    TestFolder folder;
    makeDuplicates(folder, {u"sub\\a.txt"_s, u"sub\\b.txt"_s}, QByteArray(2048, 'x'));
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    QCOMPARE(scene.side()->model()->index(0, 0).data().toString(),
             u"a.txt\n\n"_s + folder.path(u"sub"_s) + u"\nLast Access Time: "_s +
                 platform::localFileTime(someTime).toString());
    QCOMPARE(scene.memberText(0), u"a.txt\n"_s + folder.path(u"sub"_s) + u"\nFile Size: 2.00 KB"_s);
    const QString summary = scene.find<ElidedLabel>("resultTotalsLabel")->text();
    QVERIFY2(summary.startsWith(u"1 group with 2 files"_s), qPrintable(summary));
    QVERIFY2(summary.contains(core::sizeText(2048)), qPrintable(summary));
    // The helper columns tell which record a row stands for, and are hidden.
    QCOMPARE(scene.side()->model()->index(0, GroupModel::GroupIndex).data().toInt(), 0);
    QCOMPARE(scene.members()->model()->index(1, MemberModel::MemberIndex).data().toInt(), 1);
    QVERIFY(scene.side()->isColumnHidden(GroupModel::GroupIndex));
    QVERIFY(!scene.members()->isColumnHidden(MemberModel::Text));
    for (const int column :
         {MemberModel::State, MemberModel::GroupIndex, MemberModel::MemberIndex, MemberModel::Path})
        QVERIFY(scene.members()->isColumnHidden(column));
    QCOMPARE(scene.members()->currentIndex().row(), 0);
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
    FindDuplicateResultForm page(u"C:\\"_s, groups, 0);
    QSignalSpy ready(&page, &FindDuplicateResultForm::resultReady);
    QVERIFY(page.start());
    QVERIFY(ready.wait());
    const QAbstractItemModel &side = *page.findChild<QTreeView *>(u"sideTreeView"_s)->model();
    // Without their files the titles tell nothing: the paths do.
    const auto paths = [&] {
        QStringList found;
        for (int row = 0; row < side.rowCount(); ++row)
            found.append(side.index(row, 0).data(Qt::ToolTipRole).toString());
        return found.join(QLatin1Char(' '));
    };
    auto *order = page.findChild<QComboBox *>(u"orderComboBox"_s);
    // The group on show frees nothing, as far as is known by then: its files are not there.
    QTRY_VERIFY(page.findChild<ElidedLabel *>(u"resultTotalsLabel"_s)->text().contains(u"11.00 KB"_s));
    const QStringList expected{
        u"C:\\b\\m.jpg C:\\c\\z.jpg C:\\D\\A.jpg"_s, // largest file
        u"C:\\c\\z.jpg C:\\D\\A.jpg C:\\b\\m.jpg"_s, // most to free
        u"C:\\c\\z.jpg C:\\b\\m.jpg C:\\D\\A.jpg"_s, // most files
        u"C:\\D\\A.jpg C:\\b\\m.jpg C:\\c\\z.jpg"_s, // name
        u"C:\\b\\m.jpg C:\\c\\z.jpg C:\\D\\A.jpg"_s, // folder
    };
    QCOMPARE(order->count(), expected.size());
    for (int i = 0; i < order->count(); ++i) {
        order->setCurrentIndex(i);
        QTRY_COMPARE(paths(), expected[i]);
    }
    // A member that has gone frees nothing any more.
    (*groups)[1].members[0].moved = (*groups)[1].members[1].moved = true;
    order->setCurrentIndex(1);
    QTRY_COMPARE(paths(), u"C:\\D\\A.jpg C:\\b\\m.jpg C:\\c\\z.jpg"_s);
    order->setCurrentIndex(0);
    auto *search = page.findChild<QLineEdit *>(u"searchLineEdit"_s);
    search->setText(u"OLIDAY"_s); // of any member
    QTRY_COMPARE(paths(), u"C:\\b\\m.jpg C:\\D\\A.jpg"_s);
}

void FindDuplicateResultsTest::aLongListOpensLikeAShortOne()
{
    constexpr int count = 5'000;
    FindDuplicateResultForm page(u"C:\\nowhere"_s, inventedGroups(count), 0);
    page.resize(900, 500);
    auto *side = page.findChild<QTreeView *>(u"sideTreeView"_s);
    CountingDelegate delegate(3);
    side->setItemDelegate(&delegate);
    QSignalSpy ready(&page, &FindDuplicateResultForm::resultReady);
    QVERIFY(page.start());
    QVERIFY(ready.wait());
    page.show();
    side->setCurrentIndex(side->model()->index(count - 1, 0));
    QVERIFY2(delegate.measured < 200, qPrintable(QString::number(delegate.measured)));
    auto *members = page.findChild<QTreeView *>(u"mainTreeView"_s);
    QTRY_COMPARE(members->model()->index(1, MemberModel::Path).data().toString(),
                 u"C:\\nowhere\\99\\copy 4999.jpg"_s);
    // None of the files is there, which the list finds out by itself behind the user's back.
    const auto missing = [&] {
        return side->model()->match(side->model()->index(0, 0), FileRowDelegate::TitleRole,
                                    u"The file was moved to another location"_s, -1);
    };
    QTRY_COMPARE_WITH_TIMEOUT(missing().size(), count, 60'000);
}

void FindDuplicateResultsTest::comparesContents()
{
    TestFolder folder;
    // More than the comparison reads at once, with the difference behind that.
    const QByteArray content(1'500'000, 'x');
    QByteArray different = content;
    different.back() = 'y';
    makeDuplicates(folder, {u"1.txt"_s, u"2.txt"_s, u"3.txt"_s}, content);
    makeDuplicates(folder, {u"4.txt"_s}, different);
    FakeFileProbe probe;
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
            all.append(scene.badges(row).join(u", "_s).remove(u", proposed to keep"_s));
        return all;
    };
    QCOMPARE(badges(), (QStringList{u"compared with this one"_s, u"identical to the first"_s,
                                    u"identical to the first"_s, u"last copy, different content"_s}));
    QVERIFY(scene.badges(0).contains(u"proposed to keep"_s));
    // Where the first one must not be opened, another one takes its place.
    probe.setAttributes(folder.path(u"1.txt"_s), core::AttributeOffline);
    scene.click("compareButton");
    QTRY_VERIFY(!scene.form->isBusy());
    // What could not be compared is not certain to have a copy.
    QCOMPARE(badges(), (QStringList{u"last copy, in the cloud, not opened"_s, u"compared with this one"_s,
                                    u"identical to row 2"_s, u"last copy, different content"_s}));
    QVERIFY(scene.badges(1).contains(u"proposed to keep"_s));
}

void FindDuplicateResultsTest::remarksOnMembers()
{
    const platform::KnownFolder windowsId = platform::KnownFolder::Windows;
    const platform::KnownFolder programsId = platform::KnownFolder::ProgramFiles;
    const auto file = [](const QString &folder, quint64 created) {
        return FileRecord{u"a.txt"_s, folder, 100, someTime, created, someTime};
    };
    DuplicateGroup group{{file(platform::knownFolder(windowsId).toUpper() + u"\\sub"_s, 5),
                          file(platform::knownFolder(programsId), 4),
                          file(platform::knownFolder(windowsId) + u" of a house"_s, 3)},
                         100};
    const duplicates::MemberFacts there{{true, false, -1}, std::nullopt};
    MemberModel model;
    model.setGroup(&group, 0);
    model.setFacts({there, there, there});
    const auto badges = [&] {
        QStringList all;
        for (int row = 0; row < 3; ++row)
            all.append(model.index(row, 0).data(Qt::ToolTipRole).toString().section(u'\n', 1));
        return all;
    };
    QCOMPARE(badges(),
             (QStringList{u"belongs to Windows"_s, u"belongs to a program"_s, u"proposed to keep"_s}));
    group.members[2].checked = group.members[2].moved = true;
    model.setFacts({there, there, {}});
    QCOMPARE(badges(), (QStringList{u"belongs to Windows"_s, u"belongs to a program\nproposed to keep"_s,
                                    u"moved to the recycle bin"_s}));
}

void FindDuplicateResultsTest::severalMembersAreOpenedShownAndCopied()
{
    TestFolder folder;
    QStringList names;
    for (int i = 0; i < 12; ++i)
        names.append(u"%1\\%2, a & b.%3"_s.arg(i / 6)
                         .arg(i, 2, 10, QLatin1Char('0'))
                         .arg(i == 0 ? u"exe"_s : u"msix"_s));
    makeDuplicates(folder, names, QByteArray(100, 'x'));
    FakeShell shell;
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    QStringList paths;
    for (const QString &name : std::as_const(names))
        paths.append(folder.path(name));
    QTest::mouseDClick(scene.members()->viewport(), Qt::LeftButton, {},
                       scene.members()->visualRect(scene.members()->currentIndex()).center());
    QVERIFY(shell.opened.isEmpty()); // a program must not run by a slip of the mouse
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
    // A window a folder, no more files than a person meant to open, and no program among them.
    QTest::keyClick(scene.members(), Qt::Key_A, Qt::ControlModifier);
    scene.click("explorerButton");
    QCOMPARE(shell.revealed, (QStringList{paths[0], paths[6]}));
    shell.opened.clear();
    scene.click("openButton");
    QCOMPARE(shell.opened, paths.mid(1, 10));
    QVERIFY(scene.find<NoticeBar>("noticeBar")->text().contains(u"10 of the 11"_s));
    QVERIFY(scene.find<NoticeBar>("noticeBar")->text().contains(u"Programs were not opened."_s));
    scene.selectMember(0);
    QVERIFY(scene.isEnabled("RecycleBinButton"));
    shell.succeeds = false;
    scene.click("openButton");
    QVERIFY(scene.find<NoticeBar>("noticeBar")->text().contains(paths[0]));
}

QTEST_MAIN(FindDuplicateResultsTest)

#include "tst_find_duplicate_results.moc"
