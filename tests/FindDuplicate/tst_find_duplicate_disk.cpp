// SPDX-License-Identifier: GPL-3.0-or-later

// The results page on a disk that sleeps, keeps files in a cloud store, or answers more than memory holds.

#include "tests/FindDuplicate/RemovalScene.h"
#include "tests/support/FakeFileProbe.h"
#include "tests/support/TestPrefix.h"

#include <QFile>

using namespace Qt::StringLiterals;
using tests::content;
using tests::FakeFileProbe;
using tests::FinderScene;
using tests::inventedGroups;
using tests::makeDuplicates;
using tests::TestFolder;
using tests::three;
using tests::ThreeCopies;
using Scene = tests::RemovalScene;

namespace
{

// Counts the rows that the view has looked at.
class CountingDelegate : public FileRowDelegate
{
public:
    using FileRowDelegate::FileRowDelegate;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        ++rows;
        return FileRowDelegate::sizeHint(option, index);
    }
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        ++rows;
        FileRowDelegate::paint(painter, option, index);
    }
    mutable int rows = 0;
};

// What is looked at until the list stands at its end, with a disk that has not answered yet.
int rowsLookedAt(int count)
{
    FakeFileProbe probe;
    const FakeFileProbe::Hold sleeping = probe.hold(u"C:\\nowhere\\0\\file 0.jpg"_s);
    FindDuplicateResultForm page(u"C:\\nowhere"_s, inventedGroups(count), 0);
    page.resize(900, 500);
    auto *side = page.findChild<QTreeView *>(u"sideTreeView"_s);
    CountingDelegate delegate(3);
    side->setItemDelegate(&delegate);
    QSignalSpy ready(&page, &FindDuplicateResultForm::resultReady);
    if (!page.start() || !ready.wait() || side->model()->rowCount() != count)
        return -1;
    page.show();
    side->scrollToBottom();
    side->setCurrentIndex(side->model()->index(count - 1, 0));
    QTest::qWait(50);
    return delegate.rows;
}

} // namespace

class FindDuplicateDiskTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void init() { m_guard = std::make_unique<tests::RegistryGuard>(); }
    void cleanup() { m_guard.reset(); }

    void aLongListOpensLikeAShortOne();
    void aSleepingDiskStopsNothing();
    void withoutMemoryThePageStaysUsable();
    void noQuestionForWhatLiesInTheCloudOnly();
    void aFileTheListDidNotKnowYetIsGuardedAsWell();
    void withoutMemoryNothingIsMoved();
    void aSleepingDiskDoesNotStopTheRemoval();
    void nobodyWaitsForTheOthersAfterAMove();
    void nobodyWaitsForTheLookBeforeTheQuestion_data();
    void nobodyWaitsForTheLookBeforeTheQuestion();
    void nobodyWaitsForAComparison();
    void aDiskThatDoesNotAnswerIsAskedByAFewThreadsOnly();

private:
    std::unique_ptr<tests::RegistryGuard> m_guard;
};

void FindDuplicateDiskTest::aLongListOpensLikeAShortOne()
{
    const int few = rowsLookedAt(100);
    const int many = rowsLookedAt(50'000);
    QVERIFY(few > 0);
    QVERIFY2(many > 0 && many <= 2 * few, qPrintable(u"%1 and %2"_s.arg(few).arg(many)));
}

void FindDuplicateDiskTest::aSleepingDiskStopsNothing()
{
    TestFolder folder;
    makeDuplicates(folder, {u"a.txt"_s, u"b.txt"_s}, QByteArray(200, 'x'));
    makeDuplicates(folder, {u"c.txt"_s, u"d.txt"_s}, QByteArray(100, 'x'));
    FakeFileProbe probe;
    FinderScene scene;
    QVERIFY(scene.scan(folder.path()));
    std::vector<FakeFileProbe::Hold> sleeping;
    const auto asleep = [&] { return QTest::qWaitFor([&] { return probe.held().tryAcquire(); }); };
    // The list of groups and the group are being looked at, and the user goes on.
    sleeping.push_back(probe.hold(folder.path(u"a.txt"_s)));
    sleeping.push_back(probe.hold(folder.path(u"b.txt"_s)));
    scene.members()->setFocus();
    QTest::keyClick(scene.members(), Qt::Key_F5);
    QVERIFY(asleep() && asleep());
    QVERIFY(scene.selectGroup(1));
    QVERIFY(scene.selectGroup(0));
    sleeping.push_back(probe.hold(folder.path(u"b.txt"_s)));
    QTest::keyClick(scene.members(), Qt::Key_F5);
    QVERIFY(asleep());
    QTest::keyClick(scene.members(), Qt::Key_F5);
    QVERIFY(scene.scan(folder.path()));
}

void FindDuplicateDiskTest::withoutMemoryThePageStaysUsable()
{
    TestFolder folder;
    makeDuplicates(folder, {u"a.txt"_s, u"b.txt"_s}, QByteArray(200, 'x'));
    makeDuplicates(folder, {u"c.txt"_s, u"d.txt"_s}, QByteArray(100, 'x'));
    FakeFileProbe probe;
    FinderScene scene;
    probe.failAt(folder.path(u"c.txt"_s)); // of the list of groups
    probe.failAt(folder.path(u"d.txt"_s)); // of the group
    QVERIFY(scene.scan(folder.path()));
    auto *notice = scene.find<NoticeBar>("noticeBar");
    QTRY_VERIFY(notice->text().contains(u"memory"_s));
    notice->hide();
    scene.side()->setCurrentIndex(scene.side()->model()->index(1, 0));
    QTRY_VERIFY(notice->text().contains(u"memory"_s));
    QCOMPARE(scene.members()->model()->rowCount(), 0);
    QVERIFY(!scene.isEnabled("RecycleBinButton"));
    QVERIFY(scene.selectGroup(0));
    QVERIFY(scene.isEnabled("RecycleBinButton"));
}

void FindDuplicateDiskTest::noQuestionForWhatLiesInTheCloudOnly()
{
    FakeFileProbe probe;
    Scene scene(three);
    const QString path = scene.folder.path(u"b.txt"_s);
    probe.setAttributes(path, core::AttributeRecallOnOpen);
    QVERIFY(scene.scan());
    QVERIFY(scene.badges(1).contains(u"in the cloud"_s));
    QVERIFY(scene.remove(1));
    QVERIFY(scene.dialogs.questions.isEmpty());
    QVERIFY(scene.notice().contains(u"cloud"_s));
    QVERIFY(!probe.opened().contains(path));
}

// The disk has not told which file it is when the row is shown.
void FindDuplicateDiskTest::aFileTheListDidNotKnowYetIsGuardedAsWell()
{
    FakeFileProbe probe;
    Scene scene(three);
    const QString path = scene.folder.path(u"b.txt"_s);
    probe.setAttributes(path, core::AttributeRecallOnOpen);
    QVERIFY(scene.scan());
    probe.setAttributes(path, 0);
    scene.dialogs.whileOpen = [&] {
        tests::requireBelow(scene.folder.path(), path);
        QVERIFY(QFile::rename(path, scene.folder.path(u"kept.txt"_s)));
        makeDuplicates(scene.folder, {u"b.txt"_s}, content);
    };
    QVERIFY(scene.remove(1, platform::idYes));
    QCOMPARE(scene.dialogs.questions.size(), 1);
    QVERIFY(scene.bin.asked.isEmpty());
    QVERIFY(scene.notice().contains(u"changed"_s));
}

void FindDuplicateDiskTest::withoutMemoryNothingIsMoved()
{
    FakeFileProbe probe;
    ThreeCopies scene;
    probe.failAt(scene.memberPath(1));
    QVERIFY(scene.remove(1));
    QVERIFY(scene.dialogs.questions.isEmpty());
    QVERIFY(scene.notice().contains(u"memory"_s));
    QVERIFY(scene.toolsAre(true));
    // After a move the page goes without what it cannot read.
    scene.bin.beforeMove = [&](const QString &) { probe.failAt(scene.folder.path(u"a.txt"_s)); };
    QVERIFY(scene.remove(2, platform::idYes));
    QVERIFY(scene.isMarked(2));
    QCOMPARE(scene.bin.taken.size(), 1);
    QVERIFY(scene.form->groups()[0].members[2].moved);
    QVERIFY(scene.badges(2).contains(u"moved to the recycle bin"_s));
    QTRY_VERIFY(scene.notice().contains(u"memory"_s));
    QVERIFY(scene.isMarked(2));
}

// The list is being read again when the user asks for the removal.
void FindDuplicateDiskTest::aSleepingDiskDoesNotStopTheRemoval()
{
    FakeFileProbe probe;
    ThreeCopies scene;
    const QString path = scene.memberPath(0);
    tests::requireBelow(scene.folder.path(), scene.memberPath(1));
    QVERIFY(QFile::remove(scene.memberPath(1)));
    const FakeFileProbe::Hold sleeping = probe.hold(scene.memberPath(2));
    scene.members()->setFocus();
    QTest::keyClick(scene.members(), Qt::Key_F5);
    QVERIFY(QTest::qWaitFor([&] { return probe.held().tryAcquire(); }));
    QVERIFY(scene.remove(0, platform::idNo));
    QTRY_COMPARE(scene.memberText(1), u"The file was moved to another location"_s);
    QCOMPARE(scene.members()->currentIndex().row(), 0);
    QVERIFY(scene.remove(0, platform::idYes));
    QCOMPARE(scene.bin.taken, QStringList{path});
}

// The disk sleeps when the group is read anew.
void FindDuplicateDiskTest::nobodyWaitsForTheOthersAfterAMove()
{
    FakeFileProbe probe;
    ThreeCopies scene;
    const FakeFileProbe::Hold sleeping = probe.hold(scene.memberPath(2));
    QVERIFY(scene.remove(0, platform::idYes));
    QCOMPARE(scene.bin.taken, QStringList{scene.memberPath(0)});
    QVERIFY(QTest::qWaitFor([&] { return probe.held().tryAcquire(); }));
    QVERIFY(scene.isMarked(0) && !scene.form->isBusy() && scene.toolbar.last());
    scene.selectMember(1);
    QVERIFY(scene.toolsAre(true));
}

void FindDuplicateDiskTest::nobodyWaitsForTheLookBeforeTheQuestion_data()
{
    QTest::addColumn<bool>("closing");
    QTest::newRow("the window is to close") << true;
    QTest::newRow("the page goes") << false;
}

void FindDuplicateDiskTest::nobodyWaitsForTheLookBeforeTheQuestion()
{
    QFETCH(bool, closing);
    FakeFileProbe probe;
    ThreeCopies scene;
    const FakeFileProbe::Hold sleeping = probe.hold(scene.memberPath(0));
    scene.selectMember(0);
    scene.click("RecycleBinButton");
    QVERIFY(QTest::qWaitFor([&] { return probe.held().tryAcquire(); }));
    QVERIFY(scene.form->isBusy());
    if (closing) {
        scene.form->requestStop();
        QVERIFY(!scene.form->isBusy() && scene.toolsAre(true) && scene.toolbar.last());
    } else {
        scene.form.reset(); // would hang here
    }
    QVERIFY(scene.dialogs.questions.isEmpty());
}

void FindDuplicateDiskTest::nobodyWaitsForAComparison()
{
    FakeFileProbe probe;
    ThreeCopies scene;
    const QStringList before = scene.badges(0);
    auto *bar = scene.find<QWidget>("compareProgressBar");
    std::vector<FakeFileProbe::Hold> sleeping;
    const auto compare = [&] {
        sleeping.push_back(probe.hold(scene.memberPath(0)));
        scene.click("compareButton");
        return QTest::qWaitFor([&] { return probe.held().tryAcquire(); }) && scene.form->isBusy() &&
               bar->isVisible();
    };
    QVERIFY(compare());
    scene.click("compareCancelButton");
    QVERIFY(!scene.form->isBusy() && !bar->isVisible());
    QVERIFY(scene.isEnabled("compareButton") && scene.isEnabled("RecycleBinButton"));
    QVERIFY(scene.notice().contains(u"cancelled"_s));
    QCOMPARE(scene.badges(0), before);
    QVERIFY(compare());
    scene.form->requestStop(); // the window is to close
    QVERIFY(!scene.form->isBusy() && !bar->isVisible());
    QVERIFY(compare());
    scene.click("backButton");
    QVERIFY(!scene.form->isBusy());
    QVERIFY(scene.find<QWidget>("selectFolderButton")->isVisible());
}

void FindDuplicateDiskTest::aDiskThatDoesNotAnswerIsAskedByAFewThreadsOnly()
{
    FakeFileProbe probe;
    ThreeCopies scene;
    std::vector<FakeFileProbe::Hold> sleeping;
    scene.members()->setFocus();
    for (int i = 0; i < 10; ++i) {
        sleeping.push_back(probe.hold(scene.memberPath(1)));
        QTest::keyClick(scene.members(), Qt::Key_F5);
        QTest::qWait(100);
    }
    QVERIFY2(probe.held().available() <= 5, qPrintable(QString::number(probe.held().available())));
    // What the user wants last is done when the disk is there again.
    scene.side()->setCurrentIndex(scene.side()->model()->index(1, 0));
    sleeping.clear();
    QTRY_COMPARE(scene.members()->model()->rowCount(), 2);
}

QTEST_MAIN(FindDuplicateDiskTest)

#include "tst_find_duplicate_disk.moc"
