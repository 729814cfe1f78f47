// SPDX-License-Identifier: GPL-3.0-or-later

// The results page on a disk that sleeps, keeps files in a cloud store, or answers more than memory holds.

#include "tests/FindDuplicate/RemovalScene.h"
#include "tests/support/FakeFileProbe.h"
#include "tests/support/FakeShell.h"
#include "widgets/ElidedLabel.h"

#include <QFile>
#include <QToolButton>

#include <functional>

using namespace Qt::StringLiterals;
using namespace tests;
using Scene = RemovalScene;

namespace
{

// Whether the disk has been asked what it does not answer.
bool isAsked(FakeFileProbe &probe)
{
    return QTest::qWaitFor([&] { return probe.held().tryAcquire(); });
}

} // namespace

class FindDuplicateDiskTest : public QObject
{
    Q_OBJECT

private slots:
    void aSleepingDiskStopsNothing();
    void withoutMemoryThePageStaysUsable();
    void withoutMemoryNothingIsMoved();
    void aSleepingDiskDoesNotStopTheRemoval();
    void nobodyWaitsForTheOthersAfterAMove();
    void nobodyWaitsForAComparison();
    void aGroupIsListedBeforeTheDiskAnswers();
    void aLongLookIsToldAndGivenUp_data();
    void aLongLookIsToldAndGivenUp();
};

void FindDuplicateDiskTest::aSleepingDiskStopsNothing()
{
    FakeFileProbe probe;
    ThreeCopies scene;
    std::vector<FakeFileProbe::Hold> sleeping;
    const auto refresh = [&] {
        sleeping.push_back(probe.hold(scene.folder.path(u"b.txt"_s)));
        scene.members()->setFocus();
        QTest::keyClick(scene.members(), Qt::Key_F5);
    };
    refresh();
    QVERIFY(isAsked(probe));
    QVERIFY(scene.selectGroup(1)); // the user goes on
    QVERIFY(scene.selectGroup(0));
    for (int i = 0; i < 10; ++i) {
        refresh();
        QTest::qWait(100);
    }
    // A few threads wait for the disk, and not one for every wish.
    QVERIFY2(probe.held().available() <= 5, qPrintable(QString::number(probe.held().available())));
    // What the user wants last is done when the disk is there again.
    scene.side()->setCurrentIndex(scene.side()->model()->index(1, 0));
    sleeping.clear();
    QTRY_COMPARE(scene.members()->model()->rowCount(), 2);
    QVERIFY(scene.selectGroup(0));
    probe.held().acquire(probe.held().available());
    refresh();
    QVERIFY(isAsked(probe));
    QVERIFY(scene.scan());
}

void FindDuplicateDiskTest::withoutMemoryThePageStaysUsable()
{
    FakeFileProbe probe;
    Scene scene(three);
    probe.failAt(scene.folder.path(u"z\\other.mp3"_s));  // of the list of groups
    probe.failAt(scene.folder.path(u"z\\other2.mp3"_s)); // of the group
    QVERIFY(scene.scan());
    QTRY_VERIFY(scene.notice().contains(u"memory"_s));
    scene.find<NoticeBar>("noticeBar")->hide();
    scene.side()->setCurrentIndex(scene.side()->model()->index(1, 0));
    QTRY_VERIFY(scene.notice().contains(u"memory"_s));
    QCOMPARE(scene.members()->model()->rowCount(), 2);
    QVERIFY(scene.badges(0).isEmpty());
    QVERIFY(scene.selectGroup(0));
    QVERIFY(scene.isEnabled("RecycleBinButton"));
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
    requireBelow(scene.folder.path(), scene.memberPath(1));
    QVERIFY(QFile::remove(scene.memberPath(1)));
    const FakeFileProbe::Hold sleeping = probe.hold(scene.memberPath(2));
    scene.members()->setFocus();
    QTest::keyClick(scene.members(), Qt::Key_F5);
    QVERIFY(isAsked(probe));
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
    QVERIFY(isAsked(probe));
    QVERIFY(scene.isMarked(0) && !scene.form->isBusy() && scene.toolbar.last());
    scene.selectMember(1);
    QVERIFY(scene.toolsAre(true));
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
        return isAsked(probe) && scene.form->isBusy() && bar->isVisible();
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

// What is done is done with the files of the group that is selected.
void FindDuplicateDiskTest::aGroupIsListedBeforeTheDiskAnswers()
{
    FakeFileProbe probe;
    ThreeCopies scene;
    tests::FakeShell shell;
    const FakeFileProbe::Hold sleeping = probe.hold(scene.folder.path(u"z\\other2.mp3"_s));
    scene.side()->setCurrentIndex(scene.side()->model()->index(1, 0));
    QVERIFY(scene.find<ElidedLabel>("groupTitleLabel")->text().startsWith(u"2 files"_s));
    scene.click("openButton");
    QCOMPARE(shell.opened, QStringList{scene.folder.path(u"z\\other.mp3"_s)});
    QVERIFY(isAsked(probe));
    QVERIFY(scene.badges(0).isEmpty()); // nothing is made up
    QVERIFY(scene.memberText(0).startsWith(u"other.mp3\n"_s));
}

void FindDuplicateDiskTest::aLongLookIsToldAndGivenUp_data()
{
    using Action = std::function<void(Scene &, FakeFileProbe::Hold &)>;
    QTest::addColumn<Action>("whatHappens");
    QTest::addColumn<int>("questions");
    QTest::newRow("the user cancels") << Action([](Scene &scene, FakeFileProbe::Hold &) {
        auto *cancel = scene.find<NoticeBar>("noticeBar")->findChild<QToolButton *>(u"noticeActionButton"_s);
        QVERIFY(cancel->isEnabled());
        cancel->click();
        QVERIFY(!scene.form->isBusy());
    }) << 0;
    QTest::newRow("the window is to close") << Action([](Scene &scene, FakeFileProbe::Hold &) {
        scene.form->requestStop();
        QVERIFY(!scene.form->isBusy());
    }) << 0;
    QTest::newRow("the page goes") << Action([](Scene &scene, FakeFileProbe::Hold &) {
        scene.form.reset(); // would hang here
    }) << 0;
    QTest::newRow("the disk answers after all") << Action([](Scene &scene, FakeFileProbe::Hold &sleeping) {
        scene.dialogs.nextMessageBox.enqueue(platform::idNo);
        scene.dialogs.whileOpen = [&] { QVERIFY(scene.notice().isEmpty()); };
        sleeping.reset();
        QVERIFY(scene.waitForEnd());
    }) << 1;
}

void FindDuplicateDiskTest::aLongLookIsToldAndGivenUp()
{
    QFETCH(const std::function<void(Scene &, FakeFileProbe::Hold &)>, whatHappens);
    FakeFileProbe probe;
    ThreeCopies scene;
    FakeFileProbe::Hold sleeping = probe.hold(scene.memberPath(0));
    scene.selectMember(0);
    scene.click("RecycleBinButton");
    QVERIFY(isAsked(probe));
    QTRY_VERIFY(scene.notice().contains(u"Looking"_s));
    QVERIFY(scene.form->isBusy() && !scene.members()->isEnabled() && !scene.isEnabled("backButton"));
    whatHappens(scene, sleeping);
    QTEST(static_cast<int>(scene.dialogs.questions.size()), "questions");
    if (!scene.form)
        return;
    QVERIFY(scene.notice().isEmpty() && scene.toolbar.last());
    QVERIFY(scene.members()->isEnabled() && scene.members()->hasFocus() && scene.toolsAre(true));
}

QTEST_MAIN(FindDuplicateDiskTest)

#include "tst_find_duplicate_disk.moc"
