// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/CompareView.h"
#include "FindDuplicateImage/ImageGroupModel.h"
#include "platform/Paths.h"
#include "tests/FindDuplicateImage/Trio.h"
#include "tests/support/FakeFileProbe.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace tests;

namespace
{

// The group leaves the screen and comes back.
void lookAnew(const Trio &scene)
{
    auto *search = scene.find<QLineEdit>("searchLineEdit");
    search->setText(u"nothing"_s);
    QTRY_COMPARE(scene.main()->model()->rowCount(), 0);
    search->clear();
    QTRY_COMPARE(scene.main()->model()->rowCount(), 3);
}

// By a file of the same size and time. The old one stays, so that its identity is not given out again.
void replaceThird(const Trio &scene)
{
    const auto facts = platform::fileFacts(scene.third);
    requireBelow(scene.folder.path(), scene.third);
    QVERIFY(QFile::rename(scene.third, scene.folder.path(u"kept.jpg"_s)));
    scene.folder.makeFile(u"c\\third.jpg"_s, QByteArray(static_cast<int>(facts->size), 'x'));
    scene.folder.setTimes(u"c\\third.jpg"_s, facts->lastWriteTime, facts->lastWriteTime);
}

// The folder of the third picture becomes a link to another one with such a picture.
void linkFolderOfThird(Trio &scene)
{
    requireBelow(scene.folder.path(), scene.third);
    QVERIFY(QFile::remove(scene.third));
    QVERIFY(QDir().rmdir(scene.folder.path(u"c"_s)));
    scene.save(u"elsewhere\\third.jpg"_s, blocks(1, {600, 400}));
    scene.folder.makeLink(u"c"_s, u"elsewhere"_s);
}

} // namespace

class LookAlikeRemovalTest : public QObject
{
    Q_OBJECT

private slots:
    void noLeavesEverything();
    void yesMovesThatOneOnly();
    void theLastCopyIsToldBeforeItIsAskedFor();
    void marksTheSameFile();
    void aFailedMoveIsNotHidden();
    void movesWhatWasShownOrNothing();
    void aCopyThatBecomesTheLastUnderTheQuestionStays();
    void aFileTheListDidNotKnowYetIsGuardedAsWell();
    void saysWhatIsNoCopyAnyMore();
    void nobodyWaitsForTheOthersAfterAMove();
    void aLongLookIsToldAndGivenUp();
    void closingGivesUpALookAndThenCloses();
};

void LookAlikeRemovalTest::noLeavesEverything()
{
    // When the window is to close, whatever is answered means no.
    for (const bool closing : {false, true}) {
        Trio scene;
        scene.dialogs.whileOpen = [&] {
            if (closing)
                scene.form->requestStop();
        };
        scene.clickRecycle(2, closing ? platform::idYes : platform::idNo);
        QCOMPARE(scene.dialogs.questions.size(), 1);
        QVERIFY(scene.dialogs.questions.first().text.contains(scene.third));
        QVERIFY(scene.bin.asked.isEmpty());
        QVERIFY(scene.recycle()->isEnabled());
        QVERIFY(scene.notice().isEmpty());
        QVERIFY(scene.toolbarIsBack());
    }
}

void LookAlikeRemovalTest::yesMovesThatOneOnly()
{
    Trio scene;
    scene.dialogs.whileOpen = [&] {
        QVERIFY(scene.form->isBusy() && !scene.form->busyText().isEmpty());
        QVERIFY(!scene.find<QWidget>("backButton")->isEnabled() && !scene.recycle()->isEnabled());
        scene.form->scan(scene.folder.path()); // refused
    };
    scene.clickRecycle(1, platform::idYes);
    QCOMPARE(scene.bin.taken, QStringList({scene.second}));
    QVERIFY(scene.exist(true, false, true));
    QCOMPARE(scene.note(1), u"Moved to the recycle bin"_s);
    QVERIFY(scene.notice().contains(scene.second));
    scene.form->findChild<FindDuplicateImageResultForm *>()
        ->findChild<QToolButton *>(u"noticeActionButton"_s)
        ->click();
    QCOMPARE(scene.shell.recycleBinOpened, 1);
    const int nextBest = QFileInfo(scene.first).size() >= QFileInfo(scene.third).size() ? 0 : 2;
    QCOMPARE(scene.note(nextBest), u"Proposed to keep"_s);
    for (const char *name : {"openButton", "explorerButton", "RecycleBinButton"})
        QVERIFY(!scene.find<QToolButton>(name)->isEnabled());
    const QModelIndex group = scene.side()->model()->index(0, 0);
    QVERIFY(group.data(ImageGroupModel::DetailRole).toString().startsWith(u"2 of 3 pictures left"));
    scene.select(0);
    QVERIFY(scene.recycle()->isEnabled());
    scene.select(1);
    scene.main()->setFocus();
    QTest::keyClick(scene.main(), Qt::Key_Delete);
    QVERIFY(!scene.form->isBusy());
    QVERIFY(scene.toolbarIsBack());
}

void LookAlikeRemovalTest::theLastCopyIsToldBeforeItIsAskedFor()
{
    Trio scene;
    scene.clickRecycle(0, platform::idYes);
    QTRY_VERIFY(!scene.facts(0)->mark.exists);
    // One that goes behind the program's back counts as well.
    requireBelow(scene.folder.path(), scene.second);
    QVERIFY(QFile::remove(scene.second));
    scene.clickRecycle(2);
    QCOMPARE(scene.dialogs.questions.size(), 1);
    QCOMPARE(scene.note(2), u"Last copy"_s);
    QVERIFY(scene.notice().contains(u"last copy"_s));
    QCOMPARE(scene.note(1), u"The file was moved to another location"_s);
    // Told, the user may ask for it all the same; the group stays without any picture.
    scene.clickRecycle(2, platform::idYes);
    QCOMPARE(scene.bin.taken, QStringList({scene.first, scene.third}));
    QVERIFY(scene.exist(false, false, false));
    QCOMPARE(scene.side()->model()->rowCount(), 1);
    QCOMPARE(scene.side()->model()->index(0, 0).data(ImageGroupModel::FolderRole).toString(),
             u"The file was moved to another location"_s);
}

void LookAlikeRemovalTest::marksTheSameFile()
{
    Scene scene;
    scene.save(u"a\\first.png"_s, blocks(1));
    scene.folder.makeHardLink(u"b\\again.png"_s, u"a\\first.png"_s);
    QVERIFY(scene.scan());
    const auto note = [&](int row) {
        return scene.main()->model()->index(row, 0).data(ImageMemberModel::NoteRole).toString();
    };
    QTRY_COMPARE(note(0), u"Last copy"_s);
    QCOMPARE(note(1), u"Last copy; Same file as first.png in "_s + scene.folder.path(u"a"_s));
}

void LookAlikeRemovalTest::aFailedMoveIsNotHidden()
{
    Trio scene;
    scene.bin.fails = true;
    scene.clickRecycle(2, platform::idYes);
    QVERIFY(scene.exist(true, true, true));
    QVERIFY(scene.notice().contains(scene.third));
    QVERIFY(scene.note(2).isEmpty());
    QVERIFY(scene.recycle()->isEnabled());
}

void LookAlikeRemovalTest::movesWhatWasShownOrNothing()
{
    for (const bool replaced : {true, false}) {
        Trio scene;
        if (replaced)
            replaceThird(scene);
        else
            linkFolderOfThird(scene);
        scene.clickRecycle(2);
        QVERIFY(scene.dialogs.questions.isEmpty()); // no question is put in vain
        QVERIFY(scene.bin.asked.isEmpty());
        QVERIFY(scene.notice().contains(scene.third));
        QVERIFY(QFile::exists(scene.third));
    }
}

void LookAlikeRemovalTest::aCopyThatBecomesTheLastUnderTheQuestionStays()
{
    Trio scene;
    scene.dialogs.whileOpen = [&] {
        requireBelow(scene.folder.path(), scene.first);
        QFile::remove(scene.first);
        scene.folder.makeFile(u"b\\second.png"_s, "another content: no copy any more");
    };
    scene.clickRecycle(2, platform::idYes);
    QVERIFY(scene.bin.asked.isEmpty());
    QCOMPARE(scene.note(2), u"Last copy"_s);
    QCOMPARE(scene.note(1), u"Last copy; Changed since the scan"_s);
}

// The disk has not told yet which file it is when the user asks.
void LookAlikeRemovalTest::aFileTheListDidNotKnowYetIsGuardedAsWell()
{
    FakeFileProbe probe;
    Trio scene;
    {
        const FakeFileProbe::Hold sleeping = probe.hold(scene.third);
        lookAnew(scene);
        QVERIFY(QTest::qWaitFor([&] { return probe.held().tryAcquire(); }));
        QVERIFY(!scene.inspected());
        scene.dialogs.whileOpen = [&] { replaceThird(scene); };
        scene.clickRecycle(2, platform::idYes);
    }
    QCOMPARE(scene.dialogs.questions.size(), 1);
    QVERIFY(scene.bin.asked.isEmpty());
    QVERIFY(scene.notice().contains(u"changed"_s));
    QTRY_VERIFY(scene.inspected());
}

void LookAlikeRemovalTest::saysWhatIsNoCopyAnyMore()
{
    Trio scene;
    const auto facts = platform::fileFacts(scene.second);
    scene.folder.setTimes(u"b\\second.png"_s, facts->lastWriteTime + 1, facts->lastWriteTime);
    linkFolderOfThird(scene);
    lookAnew(scene);
    QTRY_COMPARE(scene.note(1), u"Last copy; Changed since the scan"_s);
    QCOMPARE(scene.note(2), u"Last copy; Changed since the scan; Reached through a link"_s);
    QCOMPARE(scene.note(0), u"Last copy"_s);
}

// The disk sleeps when the group is read anew.
void LookAlikeRemovalTest::nobodyWaitsForTheOthersAfterAMove()
{
    FakeFileProbe probe;
    Trio scene;
    const FakeFileProbe::Hold sleeping = probe.hold(scene.third);
    scene.clickRecycle(1, platform::idYes);
    QCOMPARE(scene.bin.taken, QStringList({scene.second}));
    QVERIFY(QTest::qWaitFor([&] { return probe.held().tryAcquire(); }));
    QVERIFY(scene.main()->isEnabled());
    QVERIFY(scene.toolbarIsBack());
    QCOMPARE(scene.note(1), u"Moved to the recycle bin"_s);
}

void LookAlikeRemovalTest::aLongLookIsToldAndGivenUp()
{
    tests::FakeFileProbe probe;
    Trio scene;
    scene.select(2);
    // The comparison, which asks about the picture as well, is over.
    QTRY_COMPARE(scene.form->findChild<CompareView *>()->pair().second.path, scene.third);
    const tests::FakeFileProbe::Hold sleeping = probe.hold(scene.third);
    scene.recycle()->click();
    QTRY_VERIFY(scene.notice().contains(u"Looking"_s));
    QVERIFY(!scene.main()->isEnabled() && !scene.find<QWidget>("backButton")->isEnabled());
    auto *cancel = scene.form->findChild<FindDuplicateImageResultForm *>()->findChild<QToolButton *>(
        u"noticeActionButton"_s);
    QVERIFY(cancel->isEnabled());
    cancel->click();
    QVERIFY(!scene.form->isBusy());
    QVERIFY(scene.dialogs.questions.isEmpty() && scene.notice().isEmpty());
    QVERIFY(scene.main()->isEnabled() && scene.recycle()->isEnabled());
    QVERIFY(scene.toolbarIsBack());
}

void LookAlikeRemovalTest::closingGivesUpALookAndThenCloses()
{
    FakeFileProbe probe;
    Trio scene;
    scene.select(0);
    QTRY_COMPARE(scene.form->findChild<CompareView *>()->pair().first.path, scene.first);
    QSignalSpy close(scene.form.get(), &FLWidget::closeApp);
    {
        const FakeFileProbe::Hold sleeping = probe.hold(scene.first);
        scene.recycle()->click();
        scene.form->requestStop();
        QVERIFY(!scene.form->isBusy());
        QVERIFY(close.isEmpty()); // the window is in the middle of being closed
    }
    QTRY_COMPARE(close.count(), 1);
    scene.clickRecycle(0, platform::idNo); // a later one closes nothing
    QTest::qWait(50);
    QCOMPARE(close.count(), 1);
}

QTEST_MAIN(LookAlikeRemovalTest)
#include "tst_look_alike_removal.moc"
