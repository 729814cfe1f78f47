// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateNoResultFoundForm.h"
#include "FindDuplicate/FindDuplicateStartForm.h"
#include "FindDuplicate/GroupModel.h"
#include "core/SizeText.h"
#include "platform/FileTime.h"
#include "platform/KnownFolders.h"
#include "platform/Win32Enumerator.h"
#include "settings/Settings.h"
#include "tests/FindDuplicate/Pages.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeFileProbe.h"
#include "tests/support/FakeShell.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NoticeBar.h"

#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QSemaphore>

using namespace Qt::StringLiterals;
using namespace tests;
using duplicates::DuplicateGroup;
using duplicates::FileRecord;
using duplicates::GroupModel;
using duplicates::MemberModel;

namespace
{

constexpr QStringView key = u"Software\\Fernlight\\Folder Size Analyzer\\Find Duplicate";

// Stops in the listing of every folder until it is let go.
class HeldEnumerator : public platform::Win32Enumerator
{
public:
    HeldEnumerator(QSemaphore &entered, QSemaphore &go) : m_entered(entered), m_go(go) {}
    void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel) override
    {
        m_entered.release();
        m_go.acquire();
        Win32Enumerator::list(folder, out, cancel);
    }

private:
    QSemaphore &m_entered;
    QSemaphore &m_go;
};

QStringList names(const std::vector<DuplicateGroup> &groups)
{
    QStringList result;
    for (const DuplicateGroup &group : groups) {
        QStringList members;
        for (const FileRecord &file : group.members)
            members.append(file.name);
        members.sort(); // a folder's order is the file system's
        result.append(members.join(QLatin1Char(' ')));
    }
    return result;
}

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

class FindDuplicateFormTest : public QObject
{
    Q_OBJECT

private slots:
    void findsFilesOfOneSizeAndTime();
    void takesTheFirstFolderOfWhatIsDropped();
    void saysWhenThereIsNothing();
    void cancelGoesBackToTheStart();
    void rowsSayWhatTheyShould();
    void searchesAndSorts();
    void aLongListOpensLikeAShortOne();
    void severalMembersAreOpenedShownAndCopied();
    void comparesContents();
    void remarksOnMembers();
};

void FindDuplicateFormTest::findsFilesOfOneSizeAndTime()
{
    TestFolder folder;
    makeDuplicates(folder, {u"a.txt"_s, u"x\\b.TXT"_s, u".d\\c.pdf"_s}, QByteArray(100, 'x'));
    makeDuplicates(folder, {u"same.txt"_s}, QByteArray(100, 'x'), otherTime);
    makeDuplicates(folder, {u"other.mp3"_s, u".e.txt"_s}, QByteArray(100, 'x'));
    makeDuplicates(folder, {u"p.mp3"_s, u"q.mp3"_s}, QByteArray(5000, 'p'));
    FinderScene scene;
    QVERIFY(scene.scan(folder.path() + u'\\'));
    QCOMPARE(names(scene.form->groups()), (QStringList{u"p.mp3 q.mp3"_s, u"a.txt b.TXT c.pdf"_s}));
    QCOMPARE(scene.toolbar, (QList<bool>{false, true}));
    QVERIFY(!scene.form->isBusy());
    scene.click("backButton");
    QVERIFY(scene.find<QPushButton>("selectFolderButton")->isVisible());
    // Again, with what has changed on the disk and in the settings meanwhile.
    settings::writeDword(key, u"smallFileSize", 1000);
    FakeDialogs dialogs;
    dialogs.nextFolder.append({QString(), folder.path()});
    scene.click("selectFolderButton");
    QVERIFY(!scene.form->isBusy()); // cancelled
    QSignalSpy shown(scene.form.get(), &FindDuplicateForm::resultsShown);
    scene.click("selectFolderButton");
    QVERIFY(scene.form->isBusy());
    QCOMPARE(scene.find<QLabel>("scanTitleLabel")->text(), u"Searching in progress. Please wait ..."_s);
    QVERIFY(shown.wait());
    QCOMPARE(names(scene.form->groups()), QStringList{u"p.mp3 q.mp3"_s});
}

void FindDuplicateFormTest::takesTheFirstFolderOfWhatIsDropped()
{
    TestFolder folder;
    folder.makeFile(u"x.txt"_s, "text");
    const QString one = folder.makeFolder(u"one"_s);
    const QString two = folder.makeFolder(u"two"_s);
    FinderScene scene;
    auto *page = scene.form->findChild<FindDuplicateStartForm *>();
    QString told; // with the result
    // What is searched then.
    const auto drop = [&](const QStringList &names) {
        QList<QUrl> urls;
        for (const QString &name : names)
            urls.append(QUrl::fromLocalFile(folder.path(name)));
        QMimeData data;
        data.setUrls(urls);
        QSignalSpy chosen(page, &FindDuplicateStartForm::folderChosen);
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(page, &enter);
        QDropEvent letGo({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(page, &letGo);
        const bool agrees = enter.isAccepted() == scene.form->isScanning();
        const bool ended = QTest::qWaitFor([&] { return !scene.form->isBusy(); });
        told.clear();
        if (const auto *nothing = scene.form->findChild<FindDuplicateNoResultFoundForm *>())
            for (const QLabel *label : nothing->findChildren<QLabel *>())
                told += label->text();
        scene.form->OnBackToMain();
        return agrees && ended ? chosen.value(0).value(0).toString() : u"another thing than was announced"_s;
    };
    QCOMPARE(drop({u"x.txt"_s, u"missing"_s}), QString());
    QCOMPARE(drop({u"one"_s}), one);
    QVERIFY(!told.contains(u"Only"_s));
    // What is left out is told.
    QCOMPARE(drop({u"x.txt"_s, u"one"_s}), one);
    QVERIFY(told.contains(u"Only "_s + one));
    QCOMPARE(drop({u"two"_s, u"one"_s}), two);
    QVERIFY(told.contains(u"Only "_s + two));
}

void FindDuplicateFormTest::saysWhenThereIsNothing()
{
    TestFolder folder;
    makeDuplicates(folder, {u"a.txt"_s}, QByteArray(100, 'x'));
    FinderScene scene;
    QSignalSpy nothing(scene.form.get(), &FindDuplicateForm::noResultShown);
    for (const QString &root : {folder.path(), folder.path(u"missing"_s)}) {
        scene.form->scan(root);
        QVERIFY(nothing.wait());
        auto *page = scene.form->findChild<FindDuplicateNoResultFoundForm *>();
        QVERIFY(page->isVisible());
        QString texts;
        for (const QLabel *label : page->findChildren<QLabel *>())
            texts += label->text();
        QCOMPARE(texts.contains(u"1 folder could not be read"_s), root != folder.path());
        auto *back = page->findChild<QPushButton *>(u"backButton"_s);
        back->click();
        QVERIFY(scene.find<QPushButton>("selectFolderButton")->isVisible());
        QTRY_VERIFY(!scene.form->findChild<FindDuplicateNoResultFoundForm *>());
    }
}

void FindDuplicateFormTest::cancelGoesBackToTheStart()
{
    TestFolder folder;
    makeDuplicates(folder, {u"a.txt"_s, u"b.txt"_s}, QByteArray(100, 'x'));
    QSemaphore entered;
    QSemaphore go;
    FinderScene scene([&] { return std::make_unique<HeldEnumerator>(entered, go); });
    scene.form->scan(folder.path());
    QVERIFY(entered.tryAcquire(1, 20'000));
    QSignalSpy start(scene.form.get(), &FindDuplicateForm::startPageShown);
    QVERIFY(!scene.form->busyText().isEmpty());
    scene.click("cancelButton");
    QVERIFY(scene.form->isBusy());
    go.release(1000);
    QVERIFY(start.wait());
    QVERIFY(!scene.form->isBusy() && scene.form->busyText().isEmpty());
    QVERIFY(scene.form->groups().empty());
    scene.form->scan(folder.path()); // and the form may go during a scan
    scene.form.reset();
}

void FindDuplicateFormTest::rowsSayWhatTheyShould()
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
    for (const int column :
         {MemberModel::State, MemberModel::GroupIndex, MemberModel::MemberIndex, MemberModel::Path})
        QVERIFY(scene.members()->isColumnHidden(column));
    QCOMPARE(scene.members()->currentIndex().row(), 0);
}

// What is found, and the other orders: see the list of groups of the engine.
void FindDuplicateFormTest::searchesAndSorts()
{
    const auto groups = inventedGroups(3);
    FindDuplicateResultForm page(u"C:\\"_s, groups, 0);
    QSignalSpy ready(&page, &FindDuplicateResultForm::resultReady);
    QVERIFY(page.start());
    // Nothing is selected yet.
    FakeShell shell;
    page.on_openButton_clicked();
    page.on_RecycleBinButton_clicked();
    QVERIFY(shell.opened.isEmpty() && !page.isBusy());
    QVERIFY(ready.wait());
    const QAbstractItemModel &side = *page.findChild<QTreeView *>(u"sideTreeView"_s)->model();
    const auto listed = [&] {
        QList<int> found;
        for (int row = 0; row < side.rowCount(); ++row)
            found.append(side.index(row, GroupModel::GroupIndex).data().toInt());
        return found;
    };
    // The group on show frees nothing, as far as is known by then: its files are not there.
    auto *order = page.findChild<QComboBox *>(u"orderComboBox"_s);
    QTRY_VERIFY(page.findChild<ElidedLabel *>(u"resultTotalsLabel"_s)->text().contains(core::sizeText(2003)));
    QCOMPARE(listed(), (QList<int>{0, 1, 2}));
    order->setCurrentIndex(1); // most to free
    QTRY_COMPARE(listed(), (QList<int>{1, 2, 0}));
    // A member that has gone frees nothing any more.
    (*groups)[1].members[0].moved = (*groups)[1].members[1].moved = true;
    order->setCurrentIndex(0);
    QTRY_COMPARE(listed(), (QList<int>{0, 1, 2}));
    order->setCurrentIndex(1);
    QTRY_COMPARE(listed(), (QList<int>{2, 0, 1}));
    page.findChild<QLineEdit *>(u"searchLineEdit"_s)->setText(u"OPY 1"_s); // of any member
    QTRY_COMPARE(listed(), (QList<int>{1}));
}

void FindDuplicateFormTest::aLongListOpensLikeAShortOne()
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

void FindDuplicateFormTest::comparesContents()
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

void FindDuplicateFormTest::remarksOnMembers()
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
    // Two names of one file: there is nothing to choose from.
    const duplicates::MemberFacts first{{true, true, -1}, std::nullopt, false, false, false, true};
    model.setFacts({first, {{true, true, 0}, std::nullopt, false, false, false, true}, {}});
    QCOMPARE(badges()[1], u"last copy\nhard link to the file of row 1\nbelongs to a program"_s);
    group.members[2].checked = group.members[2].moved = true;
    model.setFacts({there, there, {}});
    QCOMPARE(badges(), (QStringList{u"belongs to Windows"_s, u"belongs to a program\nproposed to keep"_s,
                                    u"moved to the recycle bin"_s}));
}

void FindDuplicateFormTest::severalMembersAreOpenedShownAndCopied()
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

QTEST_MAIN(FindDuplicateFormTest)

#include "tst_find_duplicate_form.moc"
