// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ComparePane.h"
#include "FindDuplicateImage/CompareView.h"
#include "FindDuplicateImage/ImageGroupModel.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "platform/Paths.h"
#include "tests/FindDuplicateImage/Trio.h"
#include "tests/support/FakeFileProbe.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLPopupMenu.h"

#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QToolButton>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using namespace tests;

namespace
{

// Two groups: of a large picture that is there twice, and of a small one.
struct Pairs : Scene {
    Pairs()
    {
        save(u"elsewhere\\1 large.png"_s, blocks(1, {1200, 1000}));
        save(u"elsewhere\\2 large (copy).png"_s, blocks(1, {1200, 1000}));
        save(u"1 small.png"_s, blocks(2));
        save(u"2 small (twin).png"_s, blocks(2));
        if (!scan())
            qFatal("no results");
    }
};

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

class LookAlikeResultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { requireTestPrefix(); }

    void showsWhatThereIs();
    void order();
    void severalAtOnce();
    void aMenuLeavesTheKeysAlone();
    void comparesWithTheFirst();
    void comparesTwoThatAreSelected();
    void fetchesNothingFromTheCloud();
    void zoom();
    void yesMovesThatOneOnly();
    void marksTheSameFile();
    void aFailedMoveIsNotHidden();
    void saysWhatIsNoCopyAnyMore();
};

void LookAlikeResultsTest::showsWhatThereIs()
{
    const Trio scene;
    QCOMPARE(Scene::rows(scene.side()), QStringList({u"first.png"_s}));
    const QString detail = scene.side()->model()->index(0, 0).data(ImageGroupModel::DetailRole).toString();
    QVERIFY2(detail.startsWith(u"3 pictures, "), qPrintable(detail));
    // Only marked, and only compared: no button acts on what the user did not select.
    QCOMPARE(scene.note(1), u"Proposed to keep"_s);
    QVERIFY(scene.note(0).isEmpty() && scene.note(2).isEmpty());
    QCOMPARE(scene.main()->currentIndex().row(), 1);
    QVERIFY(!scene.main()->selectionModel()->hasSelection());
    QVERIFY(!scene.recycle()->isEnabled());
    scene.select(0);
    QVERIFY(scene.recycle()->isEnabled());
    QVERIFY(
        scene.find<ElidedLabel>("resultTotalsLabel")->text().startsWith(u"1 group with 3 of 4 pictures, "));
    QCOMPARE(scene.find<QToolButton>("openButton")->text(), u"Open File"_s);
    QCOMPARE(scene.find<QToolButton>("explorerButton")->text(), u"Explorer"_s);
    QCOMPARE(scene.recycle()->text(), u"Move to Recycle Bin"_s);
}

void LookAlikeResultsTest::order()
{
    Pairs scene;
    auto *order = scene.find<QComboBox>("orderComboBox");
    const auto choose = [order](const QString &text) { order->setCurrentIndex(order->findText(text)); };
    QCOMPARE(order->currentText(), u"Largest file first"_s);
    scene.side()->setCurrentIndex(scene.side()->model()->index(1, 0));
    choose(u"By folder"_s);
    QTRY_COMPARE(Scene::rows(scene.side()), QStringList({u"1 small.png"_s, u"1 large.png"_s}));
    QCOMPARE(scene.side()->currentIndex().row(), 0);
    // What is removed is of the group that is shown, not of the row that it has.
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.select(1);
    QTest::mouseClick(scene.find<QToolButton>("RecycleBinButton"), Qt::LeftButton);
    QTRY_COMPARE(scene.bin.taken, QStringList({scene.folder.path(u"2 small (twin).png"_s)}));
    QTRY_VERIFY(!scene.form->isBusy());
    const auto detail = [&scene](int row) {
        return scene.side()->model()->index(row, 0).data(ImageGroupModel::DetailRole).toString();
    };
    QVERIFY(detail(0).startsWith(u"1 of 2 "));
    QVERIFY(detail(1).startsWith(u"2 pictures"));
    // A new report begins in its own order.
    QVERIFY(scene.scan());
    QCOMPARE(order->currentText(), u"Largest file first"_s);
}

void LookAlikeResultsTest::severalAtOnce()
{
    Trio scene;
    const auto *view = scene.form->findChild<CompareView *>();
    QTest::mouseDClick(scene.main()->viewport(), Qt::LeftButton, {},
                       scene.main()->visualRect(scene.main()->model()->index(0, 0)).center());
    QVERIFY(scene.shell.opened.isEmpty()); // what looks like a picture may be a program by its name
    scene.main()->setFocus();
    scene.select(2);
    scene.main()->selectionModel()->setCurrentIndex(scene.main()->model()->index(0, 0),
                                                    QItemSelectionModel::Select);
    QTest::mouseClick(scene.find<QToolButton>("openButton"), Qt::LeftButton);
    QTest::keyClick(scene.main(), Qt::Key_E, Qt::ControlModifier);
    QTest::keyClick(scene.main(), Qt::Key_C, Qt::ControlModifier);
    const QStringList both{scene.first, scene.third};
    QCOMPARE(scene.shell.opened, both);
    QCOMPARE(scene.shell.revealed, both);
    QCOMPARE(QGuiApplication::clipboard()->text(), both.join(u'\n'));
    // One file is removed at a time.
    QVERIFY(!scene.recycle()->isEnabled());
    QTest::keyClick(scene.main(), Qt::Key_Delete);
    QVERIFY(!scene.form->isBusy());
    // The one that is left selected counts, not the one that was clicked last.
    scene.main()->selectionModel()->setCurrentIndex(scene.main()->model()->index(0, 0),
                                                    QItemSelectionModel::Deselect);
    QTRY_COMPARE(view->pair().second.path, scene.third);
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    QTest::keyClick(scene.main(), Qt::Key_Delete);
    QTRY_COMPARE(scene.bin.taken, QStringList({scene.third}));
    QTRY_VERIFY(!scene.form->isBusy());
    // A removed one among others is passed over.
    scene.main()->selectAll();
    QTest::mouseClick(scene.find<QToolButton>("openButton"), Qt::LeftButton);
    QCOMPARE(scene.shell.opened.mid(2), QStringList({scene.first, scene.second}));
    scene.shell.succeeds = false;
    scene.select(0);
    QTest::mouseClick(scene.find<QToolButton>("openButton"), Qt::LeftButton);
    QVERIFY(scene.notice().contains(scene.first));
}

void LookAlikeResultsTest::aMenuLeavesTheKeysAlone()
{
    Trio scene;
    scene.clickRecycle(1, platform::idYes);
    QCOMPARE(scene.notice(), scene.second + u" was moved to the recycle bin."_s);
    emit scene.main()->customContextMenuRequested(
        scene.main()->visualRect(scene.main()->model()->index(1, 0)).center());
    auto *menu = scene.form->findChild<FLPopupMenu *>();
    QVERIFY(menu);
    QStringList usable;
    for (const QAction *action : menu->actions())
        if (action->isEnabled() && !action->isSeparator())
            usable.append(action->text());
    QCOMPARE(usable, QStringList({u"Copy Path"_s}));
    menu->close();
    scene.main()->setFocus();
    QTest::keyClick(scene.main(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), scene.second);
    scene.select(2);
    QTest::keyClick(scene.main(), Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(scene.shell.opened, QStringList({scene.third}));
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
    requireBelow(scene.folder.path(), scene.second);
    QVERIFY(QFile::remove(scene.second));
    scene.select(1);
    QVERIFY(shown.wait(20'000));
    QVERIFY(view->pair().second.full.isNull());
    view->grab();
}

void LookAlikeResultsTest::comparesTwoThatAreSelected()
{
    Trio scene;
    const auto *view = scene.form->findChild<CompareView *>();
    scene.select(2);
    scene.main()->selectionModel()->setCurrentIndex(scene.main()->model()->index(1, 0),
                                                    QItemSelectionModel::Select);
    QTRY_COMPARE(view->pair().first.path, scene.second);
    QCOMPARE(view->pair().second.path, scene.third);
    QVERIFY(!view->pair().difference.picture.isNull());
    scene.main()->selectAll(); // of three, the one selected last beside the first
    QTRY_COMPARE(view->pair().first.path, scene.first);
}

void LookAlikeResultsTest::fetchesNothingFromTheCloud()
{
    FakeFileProbe probe;
    Trio scene;
    const auto *view = scene.form->findChild<CompareView *>();
    probe.setAttributes(scene.third, core::AttributeRecallOnDataAccess);
    scene.select(2);
    QTRY_COMPARE(view->pair().second.path, scene.third);
    QVERIFY(view->pair().second.inCloud && view->pair().second.full.isNull());
    QVERIFY(!view->pair().first.full.isNull());
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
    QCOMPARE(view.zoom(), CompareView::maxZoom);
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

void LookAlikeResultsTest::yesMovesThatOneOnly()
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
    scene.clickRecycle(2, platform::idYes);
    QVERIFY(scene.exist(true, true, true));
    QVERIFY(scene.notice().contains(scene.third));
    QVERIFY(scene.note(2).isEmpty());
    QVERIFY(scene.recycle()->isEnabled());
}

void LookAlikeResultsTest::saysWhatIsNoCopyAnyMore()
{
    Trio scene;
    const auto facts = platform::fileFacts(scene.second);
    scene.folder.setTimes(u"b\\second.png"_s, facts->lastWriteTime + 1, facts->lastWriteTime);
    linkFolderOfThird(scene);
    QTest::keyClick(scene.main(), Qt::Key_F5);
    QTRY_COMPARE(scene.note(1), u"Last copy; Changed since the scan"_s);
    QCOMPARE(scene.note(2), u"Last copy; Changed since the scan; Reached through a link"_s);
    QCOMPARE(scene.note(0), u"Last copy"_s);
}

QTEST_MAIN(LookAlikeResultsTest)
#include "tst_look_alike_results.moc"
