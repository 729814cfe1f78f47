// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ComparePane.h"
#include "FindDuplicateImage/CompareView.h"
#include "FindDuplicateImage/FindDuplicateImageResultForm.h"
#include "FindDuplicateImage/ImageGroupModel.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "FindDuplicateImage/LatestTask.h"
#include "tests/FindDuplicateImage/Scene.h"
#include "tests/support/FakeFileProbe.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NoticeBar.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QSemaphore>
#include <QToolButton>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using tests::blocks;
using tests::Scene;

namespace
{

// Three pictures that are alike; the second one is the largest.
struct Trio : Scene {
    Trio()
    {
        const QImage picture = blocks(1, {600, 400});
        first = save(u"a\\first.png"_s, picture);
        second = save(u"b\\second.png"_s, picture.scaled(1200, 800));
        third = save(u"c\\third.jpg"_s, picture);
        save(u"d\\lonely.png"_s, blocks(2));
        if (!scan() || !QTest::qWaitFor([this] { return inspected(); }))
            qFatal("no results");
    }
    bool inspected() const
    {
        const auto *model = qobject_cast<const ImageMemberModel *>(main()->model());
        return model->facts(0).has_value();
    }
    QString note(int row) const
    {
        return main()->model()->index(row, 0).data(ImageMemberModel::NoteRole).toString();
    }
    QToolButton *recycle() const { return find<QToolButton>("RecycleBinButton"); }
    QString notice() const
    {
        return form->findChild<FindDuplicateImageResultForm *>()->findChild<NoticeBar *>()->text();
    }
    bool exist(bool one, bool two, bool three) const
    {
        return QFile::exists(first) == one && QFile::exists(second) == two && QFile::exists(third) == three;
    }
    // Clicks and waits for the end.
    void clickRecycle(int row) const
    {
        select(row);
        QTest::mouseClick(recycle(), Qt::LeftButton);
        QTRY_VERIFY(!form->isBusy());
    }

    QString first;
    QString second;
    QString third;
};

} // namespace

class LookAlikeResultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }

    void showsWhatThereIs();
    void searchByName();
    void openAndReveal();
    void noLeavesEverything();
    void yesMovesThatOneOnly();
    void deleteKeyAsks();
    void busyWhileItAsks();
    void closingUnderTheQuestionMeansNo();
    void marksTheLastCopy();
    void marksTheSameFile();
    void aFailedMoveIsNotHidden();
    void movesWhatWasShownOrNothing_data();
    void movesWhatWasShownOrNothing();
    void changedWhileTheUserThinks();
    void theLastCopyIsToldBeforeItIsAskedFor();
    void aCopyThatBecomesTheLastUnderTheQuestionStays();
    void aFileTheListDidNotKnowYetIsGuardedAsWell();
    void saysWhatIsNoCopyAnyMore();
    void comparesWithTheFirst();
    void zoom();
    void onlyTheLatestTaskHasAnEffect();
    void aTaskThatThrowsHasAnEffectToo();
};

void LookAlikeResultsTest::showsWhatThereIs()
{
    const Trio scene;
    QCOMPARE(Scene::rows(scene.side()), QStringList({u"first.png"_s}));
    QVERIFY(scene.side()
                ->model()
                ->index(0, 0)
                .data(ImageGroupModel::DetailRole)
                .toString()
                .startsWith(u"3 pictures, "));
    // Only marked: no button acts on more than the selected picture.
    QCOMPARE(scene.note(1), u"Proposed to keep"_s);
    QVERIFY(scene.note(0).isEmpty() && scene.note(2).isEmpty());
    QCOMPARE(scene.main()->currentIndex().row(), 1);
    QVERIFY(scene.recycle()->isEnabled());
    QVERIFY(
        scene.find<ElidedLabel>("resultTotalsLabel")->text().startsWith(u"1 group with 3 of 4 pictures, "));
    QCOMPARE(scene.find<QToolButton>("openButton")->text(), u"Open File"_s);
    QCOMPARE(scene.find<QToolButton>("explorerButton")->text(), u"Explorer"_s);
    QCOMPARE(scene.recycle()->text(), u"Move to Recycle Bin"_s);
}

void LookAlikeResultsTest::searchByName()
{
    Scene scene;
    scene.save(u"one.png"_s, blocks(1));
    scene.save(u"one copy.png"_s, blocks(1));
    scene.save(u"two.png"_s, blocks(2));
    scene.save(u"two (twin).png"_s, blocks(2));
    QVERIFY(scene.scan());
    auto *search = scene.find<QLineEdit>("searchEdit");
    search->setText(u"TWIN)"_s); // of a member, and no pattern
    QCOMPARE(scene.side()->model()->rowCount(), 1);
    QCOMPARE(Scene::rows(scene.main()).size(), 2);
    QVERIFY(Scene::rows(scene.main()).contains(u"two (twin).png"_s));
    search->setText(u"nothing"_s);
    QCOMPARE(scene.main()->model()->rowCount(), 0);
    QVERIFY(!scene.find<QWidget>("RecycleBinButton")->isEnabled());
    search->clear();
    QCOMPARE(scene.side()->model()->rowCount(), 2);
    QCOMPARE(scene.main()->model()->rowCount(), 2);
}

void LookAlikeResultsTest::openAndReveal()
{
    Trio scene;
    scene.select(2);
    QTest::mouseClick(scene.find<QToolButton>("openButton"), Qt::LeftButton);
    QTest::mouseClick(scene.find<QToolButton>("explorerButton"), Qt::LeftButton);
    QCOMPARE(scene.shell.opened, QStringList({scene.third}));
    QCOMPARE(scene.shell.revealed, QStringList({scene.third}));
    QTest::mouseDClick(scene.main()->viewport(), Qt::LeftButton, {},
                       scene.main()->visualRect(scene.main()->model()->index(0, 0)).center());
    QCOMPARE(scene.shell.opened.size(), 1); // what looks like a picture may be a program by its name
    scene.shell.succeeds = false;
    QTest::mouseClick(scene.find<QToolButton>("openButton"), Qt::LeftButton);
    QVERIFY(!scene.notice().isEmpty());
}

void LookAlikeResultsTest::noLeavesEverything()
{
    Trio scene;
    scene.dialogs.nextMessageBox.enqueue(platform::idNo);
    scene.clickRecycle(2);
    QCOMPARE(scene.dialogs.questions.size(), 1);
    const auto &asked = scene.dialogs.questions.first();
    QCOMPARE(asked.text, u"Are you sure you want to move "_s + scene.third + u" to the recycle bin?"_s);
    QCOMPARE(asked.title, u"Confirm to save changes"_s);
    QCOMPARE(asked.flags, 0x34U);
    QVERIFY(!asked.parent);
    QVERIFY(scene.bin.asked.isEmpty());
    QVERIFY(scene.recycle()->isEnabled());
    QVERIFY(scene.notice().isEmpty());
    QVERIFY(scene.toolbarIsBack());
}

void LookAlikeResultsTest::yesMovesThatOneOnly()
{
    Trio scene;
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.clickRecycle(1);
    QCOMPARE(scene.bin.taken, QStringList({scene.second}));
    QVERIFY(scene.exist(true, false, true));
    QCOMPARE(scene.note(1), u"Moved to the recycle bin"_s);
    const int nextBest = QFileInfo(scene.first).size() >= QFileInfo(scene.third).size() ? 0 : 2;
    QCOMPARE(scene.note(nextBest), u"Proposed to keep"_s);
    for (const char *name : {"openButton", "explorerButton", "RecycleBinButton"})
        QVERIFY(!scene.find<QToolButton>(name)->isEnabled());
    QVERIFY(scene.side()
                ->model()
                ->index(0, 0)
                .data(ImageGroupModel::DetailRole)
                .toString()
                .startsWith(u"2 of 3 pictures left"));
    scene.select(0);
    QVERIFY(scene.recycle()->isEnabled());
    scene.select(1);
    QVERIFY(!scene.recycle()->isEnabled());
    QVERIFY(scene.toolbarIsBack());
}

void LookAlikeResultsTest::deleteKeyAsks()
{
    Trio scene;
    scene.select(2);
    scene.main()->setFocus();
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    QTest::keyClick(scene.main(), Qt::Key_Delete);
    QTRY_COMPARE(scene.bin.taken, QStringList({scene.third}));
    QTRY_VERIFY(!scene.form->isBusy());
    QTest::keyClick(scene.main(), Qt::Key_Delete); // nothing more to remove
    QTest::qWait(50);
    QCOMPARE(scene.dialogs.questions.size(), 1);
}

void LookAlikeResultsTest::busyWhileItAsks()
{
    Trio scene;
    scene.select(2);
    bool busy = false;
    bool usable = true;
    scene.dialogs.whileOpen = [&] {
        busy = scene.form->isBusy() && !scene.form->busyText().isEmpty();
        usable = scene.find<QWidget>("backButton")->isEnabled() || scene.recycle()->isEnabled();
        scene.form->scan(scene.folder.path()); // refused
    };
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.clickRecycle(2);
    QVERIFY(busy);
    QVERIFY(!usable);
    QCOMPARE(scene.bin.taken, QStringList({scene.third}));
    QVERIFY(scene.main()->isVisible());
}

void LookAlikeResultsTest::closingUnderTheQuestionMeansNo()
{
    Trio scene;
    scene.dialogs.whileOpen = [&] { scene.form->requestStop(); };
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.clickRecycle(2);
    QCOMPARE(scene.dialogs.questions.size(), 1);
    QVERIFY(scene.bin.asked.isEmpty());
    QVERIFY(scene.exist(true, true, true));
    QVERIFY(scene.notice().isEmpty());
    QVERIFY(scene.toolbarIsBack());
}

void LookAlikeResultsTest::marksTheLastCopy()
{
    Trio scene;
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.clickRecycle(0);
    // One that goes behind the program's back counts as well.
    tests::requireBelow(scene.folder.path(), scene.second);
    QVERIFY(QFile::remove(scene.second));
    scene.clickRecycle(2);
    QVERIFY(scene.bin.taken.size() == 1);
    QTRY_COMPARE(scene.note(2), u"Last copy"_s);
    QCOMPARE(scene.note(1), u"The file was moved to another location"_s);
    // The group stays, also without its first picture and without any.
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.clickRecycle(2);
    QVERIFY(scene.exist(false, false, false));
    QCOMPARE(scene.side()->model()->rowCount(), 1);
    QCOMPARE(scene.side()->model()->index(0, 0).data(ImageGroupModel::FolderRole).toString(),
             u"The file was moved to another location"_s);
}

void LookAlikeResultsTest::marksTheSameFile()
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

void LookAlikeResultsTest::aFailedMoveIsNotHidden()
{
    Trio scene;
    scene.bin.fails = true;
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.clickRecycle(2);
    QVERIFY(scene.exist(true, true, true));
    QVERIFY(scene.notice().contains(scene.third));
    QVERIFY(scene.note(2).isEmpty());
    QVERIFY(scene.recycle()->isEnabled());
}

void LookAlikeResultsTest::movesWhatWasShownOrNothing_data()
{
    QTest::addColumn<QString>("change");
    for (const char *change : {"gone", "edited", "touched", "replaced", "folder link"})
        QTest::newRow(change) << QString::fromLatin1(change);
}

void LookAlikeResultsTest::movesWhatWasShownOrNothing()
{
    QFETCH(const QString, change);
    Trio scene;
    tests::requireBelow(scene.folder.path(), scene.third);
    if (change == u"touched"_s) {
        scene.folder.setTimes(u"c\\third.jpg"_s, 133'000'000'000'000'000, 133'000'000'000'000'000);
    } else if (change == u"edited"_s) {
        scene.folder.makeFile(u"c\\third.jpg"_s, "another content");
    } else {
        QVERIFY(QFile::remove(scene.third));
        if (change == u"replaced"_s)
            scene.folder.makeFile(u"c\\third.jpg"_s, "another file");
        if (change == u"folder link"_s) {
            QVERIFY(QDir().rmdir(scene.folder.path(u"c"_s)));
            scene.save(u"elsewhere\\third.jpg"_s, blocks(1));
            scene.folder.makeLink(u"c"_s, u"elsewhere"_s);
        }
    }
    scene.clickRecycle(2);
    QCOMPARE(scene.dialogs.questions.size(), 0); // no question is put in vain
    QVERIFY(scene.bin.asked.isEmpty());
    QVERIFY(scene.notice().contains(scene.third));
    if (change == u"folder link"_s)
        QVERIFY(QFile::exists(scene.folder.path(u"elsewhere\\third.jpg"_s)));
}

void LookAlikeResultsTest::changedWhileTheUserThinks()
{
    Trio scene;
    scene.dialogs.whileOpen = [&scene] { scene.folder.makeFile(u"c\\third.jpg"_s, "another content"); };
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.clickRecycle(2);
    QCOMPARE(scene.dialogs.questions.size(), 1);
    QVERIFY(scene.bin.asked.isEmpty());
    QVERIFY(scene.notice().contains(scene.third));
}

void LookAlikeResultsTest::theLastCopyIsToldBeforeItIsAskedFor()
{
    Trio scene;
    for (const QString &path : {scene.first, scene.second}) {
        tests::requireBelow(scene.folder.path(), path);
        QVERIFY(QFile::remove(path));
    }
    scene.clickRecycle(2);
    QVERIFY(scene.dialogs.questions.isEmpty());
    QCOMPARE(scene.note(2), u"Last copy"_s);
    QVERIFY(scene.notice().contains(u"last copy"_s));
    // Told, the user may ask for it all the same.
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.clickRecycle(2);
    QCOMPARE(scene.bin.taken, QStringList({scene.third}));
}

void LookAlikeResultsTest::aCopyThatBecomesTheLastUnderTheQuestionStays()
{
    Trio scene;
    scene.dialogs.whileOpen = [&] {
        tests::requireBelow(scene.folder.path(), scene.first);
        QFile::remove(scene.first);
        scene.folder.makeFile(u"b\\second.png"_s, "another content: no copy any more");
    };
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.clickRecycle(2);
    QVERIFY(scene.bin.asked.isEmpty());
    QCOMPARE(scene.note(2), u"Last copy"_s);
    QCOMPARE(scene.note(1), u"Last copy; Changed since the scan"_s);
}

// The disk has not told yet which file it is when the user asks.
void LookAlikeResultsTest::aFileTheListDidNotKnowYetIsGuardedAsWell()
{
    tests::FakeFileProbe probe;
    Trio scene;
    const auto facts = probe.facts(scene.third);
    {
        const tests::FakeFileProbe::Hold sleeping = probe.hold(scene.first);
        scene.find<QLineEdit>("searchEdit")->setText(u"nothing"_s);
        scene.find<QLineEdit>("searchEdit")->clear(); // is looked at anew
        QVERIFY(QTest::qWaitFor([&] { return probe.held().tryAcquire(); }));
        QVERIFY(!scene.inspected());
        scene.dialogs.whileOpen = [&] {
            tests::requireBelow(scene.folder.path(), scene.third);
            QVERIFY(QFile::rename(scene.third, scene.folder.path(u"kept.jpg"_s)));
            scene.folder.makeFile(u"c\\third.jpg"_s, QByteArray(static_cast<int>(facts->size), 'x'));
            scene.folder.setTimes(u"c\\third.jpg"_s, facts->lastWriteTime, facts->lastWriteTime);
        };
        scene.dialogs.nextMessageBox.enqueue(platform::idYes);
        scene.clickRecycle(2);
    }
    QCOMPARE(scene.dialogs.questions.size(), 1);
    QVERIFY(scene.bin.asked.isEmpty());
    QVERIFY(scene.notice().contains(u"changed"_s));
    QTRY_VERIFY(scene.inspected());
}

void LookAlikeResultsTest::saysWhatIsNoCopyAnyMore()
{
    Trio scene;
    const auto facts = platform::fileProbe().facts(scene.second);
    scene.folder.setTimes(u"b\\second.png"_s, facts->lastWriteTime + 1, facts->lastWriteTime);
    tests::requireBelow(scene.folder.path(), scene.third);
    QVERIFY(QFile::remove(scene.third));
    QVERIFY(QDir().rmdir(scene.folder.path(u"c"_s)));
    scene.save(u"elsewhere\\third.jpg"_s, blocks(1, {600, 400}));
    scene.folder.makeLink(u"c"_s, u"elsewhere"_s);
    scene.find<QLineEdit>("searchEdit")->setText(u"nothing"_s);
    scene.find<QLineEdit>("searchEdit")->clear(); // is looked at anew
    QTRY_COMPARE(scene.note(1), u"Last copy; Changed since the scan"_s);
    QCOMPARE(scene.note(2), u"Last copy; Changed since the scan; Reached through a link"_s);
    QCOMPARE(scene.note(0), u"Last copy"_s);
}

void LookAlikeResultsTest::comparesWithTheFirst()
{
    Trio scene;
    auto *pane = scene.form->findChild<ComparePane *>();
    auto *view = scene.form->findChild<CompareView *>();
    auto *difference = scene.find<QToolButton>("differenceButton");
    QTRY_COMPARE(view->pair().second.path, scene.second);
    QSignalSpy shown(pane, &ComparePane::shown);
    // One after the other, faster than they load: the last one counts.
    scene.select(1);
    scene.select(0);
    scene.select(2);
    QVERIFY(shown.wait(20'000));
    QTRY_COMPARE(view->pair().second.path, scene.third);
    QCOMPARE(view->pair().first.path, scene.first);
    QCOMPARE(view->pair().first.full.size(), QSize(600, 400));
    QVERIFY(scene.find<ElidedLabel>("secondPictureLabel")->text().contains(u" % differs"));
    QVERIFY(difference->isEnabled());
    const QImage before = view->grab().toImage();
    QTest::mouseClick(difference, Qt::LeftButton);
    QVERIFY(view->showsDifference());
    QVERIFY(view->grab().toImage() != before);
    // The first picture has nothing to be compared with.
    scene.select(0);
    QVERIFY(shown.wait(20'000));
    QVERIFY(!difference->isEnabled());
    QVERIFY(view->pair().second.path.isEmpty());
    // One that cannot be read any more says so.
    tests::requireBelow(scene.folder.path(), scene.second);
    QVERIFY(QFile::remove(scene.second));
    scene.select(1);
    QVERIFY(shown.wait(20'000));
    QVERIFY(view->pair().second.full.isNull());
    view->grab();
}

void LookAlikeResultsTest::zoom()
{
    CompareView view;
    view.resize(808, 400); // two panes of 400 by 400
    PicturePair pair;
    for (LoadedPicture *picture : {&pair.first, &pair.second}) {
        picture->path = u"x"_s;
        picture->full = QImage(800, 800, QImage::Format_RGB32);
        picture->full.fill(Qt::black);
        picture->full.setPixel(600, 200, qRgb(255, 255, 255));
        picture->fitted = picture->full;
    }
    view.showPair(pair);
    QCOMPARE(view.actualSizeZoom(), 2.0);
    view.setZoom(1000);
    QCOMPARE(view.zoom(), CompareView::largestZoom);
    view.setZoom(0.1);
    QCOMPARE(view.zoom(), 1.0);
    // What is under the mouse stays there, in both panes: the white pixel lies at (300, 100).
    for (int i = 0; i < 10; ++i) {
        QWheelEvent wheel({300.25, 100.25}, {300.25, 100.25}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view, &wheel);
    }
    QVERIFY(view.zoom() > 5);
    const QImage shown = view.grab().toImage();
    QVERIFY(qGray(shown.pixel(300, 100)) > 200);
    QVERIFY(qGray(shown.pixel(300 + 408, 100)) > 200);
    QVERIFY(qGray(shown.pixel(250, 100)) < 30);
}

void LookAlikeResultsTest::onlyTheLatestTaskHasAnEffect()
{
    LatestTask tasks;
    QSemaphore begun;
    QSemaphore goOn;
    QStringList effects;
    bool told = false;
    tasks.start([&](const core::CancelFlag &cancel) -> LatestTask::Effect {
        begun.release();
        goOn.acquire();
        told = cancel.isSet();
        return [&effects] { effects.append(u"first"_s); };
    });
    begun.acquire();
    tasks.start([&](const core::CancelFlag &) { return [&effects] { effects.append(u"second"_s); }; });
    tasks.start([&](const core::CancelFlag &) { return [&effects] { effects.append(u"third"_s); }; });
    goOn.release();
    QTRY_VERIFY(!tasks.isRunning());
    QVERIFY(told);
    QCOMPARE(effects, QStringList({u"third"_s}));
}

void LookAlikeResultsTest::aTaskThatThrowsHasAnEffectToo()
{
    LatestTask tasks;
    QStringList effects;
    const LatestTask::Task throws = [](const core::CancelFlag &) -> LatestTask::Effect {
        throw std::bad_alloc();
    };
    tasks.start(throws, [&effects] { effects.append(u"replaced"_s); });
    tasks.start(throws, [&effects] { effects.append(u"failed"_s); });
    QTRY_VERIFY(!tasks.isRunning());
    QCOMPARE(effects, QStringList({u"failed"_s}));
    tasks.start(throws);
    QTRY_VERIFY(!tasks.isRunning());
}

QTEST_MAIN(LookAlikeResultsTest)
#include "tst_look_alike_results.moc"
