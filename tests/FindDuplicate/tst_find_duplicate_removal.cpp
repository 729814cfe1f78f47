// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/FindDuplicate/RemovalScene.h"
#include "tests/support/FakeFileProbe.h"
#include "tests/support/FakeShell.h"
#include "widgets/ElidedLabel.h"

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

#include <functional>

using namespace Qt::StringLiterals;
using namespace tests;
using Scene = RemovalScene;

class FindDuplicateRemovalTest : public QObject
{
    Q_OBJECT

private slots:
    void yesMovesThatOneFile();
    void noLeavesEverythingAsItWas();
    void whatChangesUnderTheQuestionStays_data();
    void whatChangesUnderTheQuestionStays();
    void theLastCopyIsToldBeforeItIsAskedFor();
    void noGroupIsEmptiedByOneKeyEach();
    void whatDiffersIsNoSpare();
    void whatWindowsDoesNotTraceIsNotCalledMoved();
    void noQuestionForWhatCannotBeMoved();
    void nothingElseHappensUnderTheQuestion();
    void thePageMayGoUnderTheQuestion();
    void aSearchWaitsForTheRemoval();
    void aFailedMoveIsMarkedAndTold();
    void severalGroupsOpenTheirFirstFilesThatAreLeft();
};

void FindDuplicateRemovalTest::yesMovesThatOneFile()
{
    ThreeCopies scene;
    const QString path = scene.memberPath(1);
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.side()->setFocus();
    QTest::keyClick(scene.side(), Qt::Key_Delete); // means a whole group here: nothing
    QVERIFY(!scene.form->isBusy());
    scene.members()->setFocus();
    scene.selectMember(1);
    QTest::keyClick(scene.members(), Qt::Key_Delete);
    QVERIFY(scene.waitForEnd());
    QVERIFY(scene.members()->hasFocus());
    QCOMPARE(scene.dialogs.questions.size(), 1);
    const FakeDialogs::Shown &question = scene.dialogs.questions.first();
    QCOMPARE(question.text, u"Are you sure you want to move %1 to the recycle bin?"_s.arg(path));
    QCOMPARE(question.title, u"Confirm to save changes"_s);
    QCOMPARE(question.flags, 0x34u);
    QCOMPARE(question.parent, nullptr);
    QCOMPARE(scene.bin.taken, QStringList{path});

    QVERIFY(scene.isMarked(1));
    QVERIFY(scene.form->groups()[0].members[1].checked);
    QVERIFY(scene.toolsAre(false));
    QVERIFY(scene.isThere(0) && scene.isThere(2) && !scene.isMarked(0) && !scene.isMarked(2));
    QVERIFY(scene.badges(1).contains(u"moved to the recycle bin"_s));
    QVERIFY(scene.find<ElidedLabel>("resultTotalsLabel")->text().contains(u"; 1 moved"_s));
    QVERIFY(scene.groupText(0).contains(u"2 files"_s) && scene.groupText(0).contains(u"1 removed"_s));
    QVERIFY(scene.find<ElidedLabel>("groupTitleLabel")->text().startsWith(u"2 files"_s));
    // It can be had back.
    QVERIFY(scene.notice().contains(path));
    FakeShell shell;
    auto *openBin = scene.find<NoticeBar>("noticeBar")->findChild<QToolButton *>(u"noticeActionButton"_s);
    openBin->click();
    QCOMPARE(shell.recycleBinOpened, 1);
    shell.succeeds = false;
    openBin->click();
    QVERIFY(!scene.notice().contains(path));
    QVERIFY(openBin->isHidden());
    // Another member can be removed next; the removed one is not offered again.
    scene.selectMember(0);
    QVERIFY(scene.toolsAre(true));
    scene.selectMember(1);
    QVERIFY(scene.toolsAre(false));
    // Nor after another group has been looked at.
    QVERIFY(scene.selectGroup(1));
    QVERIFY(scene.selectGroup(0));
    QVERIFY(scene.isMarked(1));
    scene.selectMember(1);
    QVERIFY(scene.toolsAre(false));
    QCOMPARE(scene.toolbar, (QList<bool>{false, true, false, true})); // the scan, the removal
    // And nobody misses it.
    scene.click("compareButton");
    QVERIFY(scene.waitForEnd());
    QVERIFY2(scene.notice().contains(u"1 identical, 0 different, 0 not read"_s), qPrintable(scene.notice()));
}

void FindDuplicateRemovalTest::noLeavesEverythingAsItWas()
{
    // When the window is to close, whatever is answered means no.
    for (const bool closing : {false, true}) {
        ThreeCopies scene;
        scene.dialogs.whileOpen = [&] {
            QVERIFY(!scene.form->busyText().isEmpty());
            if (closing)
                scene.form->requestStop();
        };
        QVERIFY(scene.remove(0, closing ? platform::idYes : platform::idNo));
        QCOMPARE(scene.dialogs.questions.size(), 1);
        QVERIFY(scene.bin.asked.isEmpty());
        for (int row = 0; row < 3; ++row)
            QVERIFY(scene.isThere(row) && !scene.isMarked(row));
        QVERIFY(!scene.form->groups()[0].members[0].checked);
        QVERIFY(scene.toolsAre(true));
        QVERIFY(scene.notice().isEmpty());
        QCOMPARE(scene.toolbar, (QList<bool>{false, true, false, true}));
    }
}

void FindDuplicateRemovalTest::whatChangesUnderTheQuestionStays_data()
{
    using Change = std::function<void(Scene &)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("told");
    QTest::newRow("its content") << Change([](Scene &scene) {
        makeDuplicates(scene.folder, {u"a.txt"_s}, QByteArray(content) + '!');
    }) << u"a.txt"_s;
    QTest::newRow("its time") << Change([](Scene &scene) {
        makeDuplicates(scene.folder, {u"a.txt"_s}, content, otherTime);
    }) << u"changed"_s;
    // The disk had not told which file it is when the row was shown.
    QTest::newRow("the file behind the path") << Change([](Scene &scene) {
        requireBelow(scene.folder.path(), scene.memberPath(0));
        QVERIFY(QFile::rename(scene.memberPath(0), scene.folder.path(u"kept.txt"_s)));
        makeDuplicates(scene.folder, {u"a.txt"_s}, content);
    }) << u"changed"_s;
    QTest::newRow("the other copies") << Change([](Scene &scene) {
        for (const int row : {1, 2}) {
            requireBelow(scene.folder.path(), scene.memberPath(row));
            QVERIFY(QFile::remove(scene.memberPath(row)));
        }
    }) << u"last copy"_s;
    QTest::newRow("the list") << Change([](Scene &scene) { QVERIFY(scene.selectGroup(1)); })
                              << u"no longer the file that the list shows"_s;
}

void FindDuplicateRemovalTest::whatChangesUnderTheQuestionStays()
{
    QFETCH(const std::function<void(Scene &)>, change);
    QFETCH(const QString, told);
    FakeFileProbe probe;
    Scene scene(three);
    const QString path = scene.folder.path(u"a.txt"_s);
    probe.setAttributes(path, core::AttributeRecallOnOpen);
    QVERIFY(scene.scan());
    probe.setAttributes(path, 0);
    scene.dialogs.whileOpen = [&] { change(scene); };
    QVERIFY(scene.remove(0, platform::idYes));
    QCOMPARE(scene.dialogs.questions.size(), 1);
    QVERIFY(scene.bin.asked.isEmpty());
    QVERIFY(QFile::exists(path) && !scene.form->groups()[0].members[0].checked);
    QVERIFY2(scene.notice().contains(told) && scene.notice().contains(path), qPrintable(scene.notice()));
    QVERIFY(scene.toolsAre(true));
}

void FindDuplicateRemovalTest::theLastCopyIsToldBeforeItIsAskedFor()
{
    ThreeCopies scene;
    // The others go, one by somebody else's hand and one by a change.
    requireBelow(scene.folder.path(), scene.memberPath(1));
    QVERIFY(QFile::remove(scene.memberPath(1)));
    scene.folder.setTimes(u"sub\\c.txt"_s, otherTime, someTime);
    QVERIFY(!scene.badges(0).contains(u"last copy"_s));
    QVERIFY(scene.remove(0));
    QVERIFY(scene.dialogs.questions.isEmpty());
    QVERIFY(scene.badges(0).contains(u"last copy"_s));
    QVERIFY(scene.badges(2).contains(u"changed since the scan"_s));
    QVERIFY(scene.notice().contains(u"last copy"_s));
    // Told, the user may ask for it all the same.
    QVERIFY(scene.remove(0, platform::idYes));
    QCOMPARE(scene.bin.taken, QStringList{scene.memberPath(0)});
    // What is gone is not asked for.
    QVERIFY(scene.remove(1));
    QCOMPARE(scene.dialogs.questions.size(), 1);
    QVERIFY(scene.notice().contains(scene.memberPath(1)));
    QTRY_COMPARE(scene.memberText(1), u"The file was moved to another location"_s);
    // The group stays, whatever is left of it.
    QCOMPARE(scene.side()->model()->rowCount(), 2);
    QCOMPARE(scene.members()->model()->rowCount(), 3);
}

// By keys alone, without a look at the badges.
void FindDuplicateRemovalTest::noGroupIsEmptiedByOneKeyEach()
{
    ThreeCopies scene;
    QVERIFY(scene.remove(0, platform::idYes));
    QVERIFY(scene.groupText(0).startsWith(u"The file was moved to another location"_s)); // at once
    QVERIFY(scene.remove(1, platform::idYes));
    QTRY_VERIFY(scene.badges(2).contains(u"last copy"_s));
    QVERIFY(scene.remove(2));
    QCOMPARE(scene.dialogs.questions.size(), 2);
    QVERIFY(scene.notice().contains(u"last copy"_s) && scene.isThere(2));
    // Something else in between takes the permission back.
    QVERIFY(scene.selectGroup(1));
    QVERIFY(scene.remove(0, platform::idYes));
    QVERIFY(scene.selectGroup(0));
    QVERIFY(scene.remove(2));
    QCOMPARE(scene.dialogs.questions.size(), 3);
    QVERIFY(scene.remove(2, platform::idYes));
    QCOMPARE(scene.bin.taken.size(), 4);
}

void FindDuplicateRemovalTest::whatDiffersIsNoSpare()
{
    Scene scene({u"a.txt"_s});
    makeDuplicates(scene.folder, {u"b.txt"_s}, QByteArray(sizeof content - 1, '?'));
    QVERIFY(scene.scan());
    const auto *summary = scene.find<ElidedLabel>("resultTotalsLabel");
    const QString before = summary->text();
    scene.click("compareButton");
    QVERIFY(scene.waitForEnd());
    for (const int row : {0, 1}) {
        QVERIFY(scene.badges(row).contains(u"last copy"_s));
        QVERIFY(!scene.badges(row).contains(u"proposed to keep"_s));
    }
    QVERIFY(summary->text() != before);
    QVERIFY(scene.remove(1));
    QVERIFY(scene.dialogs.questions.isEmpty());
    QVERIFY(scene.notice().contains(u"last copy"_s));
    // Only the comparison of the group on show is forgotten by a refresh.
    QVERIFY(scene.selectGroup(1));
    QTest::keyClick(scene.members(), Qt::Key_F5);
    QVERIFY(scene.selectGroup(0));
    QVERIFY(scene.badges(1).contains(u"different content"_s));
    QTest::keyClick(scene.members(), Qt::Key_F5);
    QTRY_VERIFY(!scene.badges(1).contains(u"different content"_s));
    QTRY_COMPARE(summary->text(), before);
}

void FindDuplicateRemovalTest::whatWindowsDoesNotTraceIsNotCalledMoved()
{
    ThreeCopies scene;
    scene.bin.tellsNoPlace = true;
    QVERIFY(scene.remove(0, platform::idYes));
    QVERIFY(!scene.isThere(0) && scene.isMarked(0));
    QVERIFY(scene.notice().contains(u"did not tell"_s));
    QVERIFY(scene.badges(0).contains(u"gone, Windows did not tell where to"_s));
    QVERIFY(!scene.find<ElidedLabel>("resultTotalsLabel")->text().contains(u"moved"_s));
    const auto *openBin =
        scene.find<NoticeBar>("noticeBar")->findChild<QToolButton *>(u"noticeActionButton"_s);
    QVERIFY(!openBin || openBin->isHidden());
}

void FindDuplicateRemovalTest::noQuestionForWhatCannotBeMoved()
{
    FakeFileProbe probe;
    Scene scene({u"d\\a.txt"_s, u"dir.\\b.txt"_s, u"z.txt"_s});
    scene.folder.makeLink(u"j"_s, u"d"_s);
    const QString inCloud = scene.folder.path(u"z.txt"_s);
    probe.setAttributes(inCloud, core::AttributeRecallOnOpen);
    QVERIFY(scene.scan());
    QCOMPARE(scene.memberPath(3), inCloud);
    QVERIFY(scene.badges(3).contains(u"in the cloud"_s));
    QVERIFY(scene.remove(3));
    QVERIFY(scene.notice().contains(u"cloud"_s));
    QVERIFY(!probe.opened().contains(inCloud));
    constexpr int real = 0;
    constexpr int odd = 1; // by its name
    constexpr int behind = 2;
    QCOMPARE(scene.memberPath(behind), scene.folder.path(u"j\\a.txt"_s));
    QVERIFY(!scene.badges(real).contains(u"reached through a link"_s));
    QVERIFY(scene.badges(behind).contains(u"reached through a link"_s));
    QVERIFY(scene.badges(behind).contains(u"same file as row 1"_s));
    QVERIFY(scene.remove(behind));
    QVERIFY(scene.notice().contains(u"link"_s));
    QVERIFY(scene.remove(odd));
    QVERIFY(scene.notice().contains(u"recycle bin"_s));
    QVERIFY(scene.dialogs.questions.isEmpty());
    QVERIFY(scene.bin.asked.isEmpty());
    QVERIFY(!scene.isMarked(behind) && !scene.isMarked(odd));
    QVERIFY(scene.isThere(real));
}

void FindDuplicateRemovalTest::nothingElseHappensUnderTheQuestion()
{
    ThreeCopies scene;
    const QString path = scene.memberPath(0);
    scene.dialogs.whileOpen = [&] {
        QVERIFY(scene.form->isBusy());
        QVERIFY(!scene.members()->isEnabled());
        scene.click("RecycleBinButton");
        scene.click("backButton");
        scene.form->OnBackToMain();
        scene.form->scan(scene.folder.path());
        QVERIFY(!scene.form->isScanning());
    };
    QVERIFY(scene.remove(0, platform::idYes));
    QCOMPARE(scene.dialogs.questions.size(), 1);
    QCOMPARE(scene.bin.taken, QStringList{path});
    QVERIFY(scene.members()->isVisible());
}

void FindDuplicateRemovalTest::thePageMayGoUnderTheQuestion()
{
    ThreeCopies scene;
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.dialogs.whileOpen = [&] { scene.form.reset(); };
    scene.selectMember(0);
    scene.click("RecycleBinButton");
    QTRY_VERIFY(!scene.form);
    QVERIFY(scene.bin.asked.isEmpty());
}

void FindDuplicateRemovalTest::aSearchWaitsForTheRemoval()
{
    ThreeCopies scene;
    const QString path = scene.memberPath(0);
    scene.dialogs.whileOpen = [&] { QTest::qWait(400); }; // longer than a search waits for the next letter
    scene.find<QLineEdit>("searchLineEdit")->setText(u"other"_s);
    QVERIFY(scene.remove(0, platform::idYes));
    QCOMPARE(scene.bin.taken, QStringList{path});
    QTRY_COMPARE(scene.side()->model()->rowCount(), 1);
    QTRY_COMPARE(scene.members()->model()->rowCount(), 2);
    // The group that is shown counts from now on, not the row that it has.
    QVERIFY(scene.selectGroup(0));
    QVERIFY(scene.remove(0, platform::idYes));
    QCOMPARE(scene.bin.taken.last(), scene.folder.path(u"z\\other.mp3"_s));
    QVERIFY(scene.form->groups()[1].members[0].moved);
}

void FindDuplicateRemovalTest::aFailedMoveIsMarkedAndTold()
{
    ThreeCopies scene;
    const auto refresh = [&] {
        scene.members()->setFocus();
        QTest::keyClick(scene.members(), Qt::Key_F5);
    };
    // One that could not be moved, and goes by another hand.
    scene.bin.fails = true;
    QSignalSpy close(scene.form.get(), &FLWidget::closeApp);
    scene.bin.beforeMove = [&](const QString &) { // on the thread that moves: the window is to close
        QMetaObject::invokeMethod(
            scene.form.get(), [&] { scene.form->requestStop(); }, Qt::BlockingQueuedConnection);
    };
    QVERIFY(scene.remove(0, platform::idYes));
    scene.bin.beforeMove = {};
    QTest::qWait(50);
    QVERIFY(close.isEmpty()); // what went wrong is shown first
    scene.selectMember(0);
    QVERIFY(scene.isMarked(0) && scene.toolsAre(false) && scene.isThere(0));
    QVERIFY(scene.badges(0).contains(u"still here: it could not be moved"_s));
    QVERIFY(!scene.find<ElidedLabel>("resultTotalsLabel")->text().contains(u"moved"_s));
    QVERIFY(!scene.groupText(0).contains(u"removed"_s));
    requireBelow(scene.folder.path(), scene.memberPath(0));
    QVERIFY(QFile::remove(scene.memberPath(0)));
    refresh();
    const QString moved = u"The file was moved to another location"_s;
    QTRY_COMPARE(scene.memberText(0), moved);
    QTRY_COMPARE(scene.side()->model()->index(0, 0).data().toString(), moved);
    QVERIFY(!scene.isMarked(0)); // it may be tried again
    // One that was moved, and whose path is used again.
    scene.bin.fails = false;
    QVERIFY(scene.remove(1, platform::idYes));
    scene.folder.makeFile(u"b.txt"_s, "another content");
    refresh();
    QTRY_VERIFY(scene.badges(1).contains(u"moved to the recycle bin, and there again"_s));
    QVERIFY(!scene.badges(1).contains(u"still here: it could not be moved"_s));
}

void FindDuplicateRemovalTest::severalGroupsOpenTheirFirstFilesThatAreLeft()
{
    ThreeCopies scene;
    QVERIFY(scene.remove(0, platform::idYes));
    tests::FakeShell shell;
    const auto click = [&](int row, Qt::MouseButton button, Qt::KeyboardModifiers keys) {
        QTest::mouseClick(scene.side()->viewport(), button, keys,
                          scene.side()->visualRect(scene.side()->model()->index(row, 0)).center());
    };
    click(1, Qt::LeftButton, {});
    click(0, Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(scene.memberPath(0), scene.folder.path(u"a.txt"_s));
    // This selects nothing else, and yet the files are those of the row that was clicked.
    click(1, Qt::RightButton, {});
    const QStringList lefts{scene.folder.path(u"b.txt"_s), scene.folder.path(u"z\\other.mp3"_s)};
    QCOMPARE(scene.memberPath(0), lefts[1]);
    emit scene.side()->customContextMenuRequested({});
    const QList<QAction *> actions = scene.find<QMenu>("groupMenu")->actions();
    QCOMPARE(actions[0]->text(), u"Open the First File of Each"_s);
    actions[0]->trigger();
    QCOMPARE(shell.opened, lefts);
    QCOMPARE(actions[1]->text(), u"Show the First File of Each in Explorer"_s);
    actions[1]->trigger();
    QCOMPARE(shell.revealed, lefts);
}

QTEST_MAIN(FindDuplicateRemovalTest)

#include "tst_find_duplicate_removal.moc"
