// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ComparePane.h"
#include "FindDuplicateImage/CompareView.h"
#include "FindDuplicateImage/ImageGroupModel.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "tests/FindDuplicateImage/Trio.h"
#include "tests/support/FakeFileProbe.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLPopupMenu.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QSemaphore>
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

} // namespace

class LookAlikeResultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { requireTestPrefix(); }

    void showsWhatThereIs();
    void search();
    void searchWaitsForAnAnswer();
    void order();
    void refreshLooksAtTheDisk();
    void severalAtOnce();
    void aMenuLeavesTheKeysAlone();
    void comparesWithTheFirst();
    void comparesTwoThatAreSelected();
    void fetchesNothingFromTheCloud();
    void zoom();
    void severalGroupsOpenTheirFirstPicturesThatAreLeft();
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

void LookAlikeResultsTest::search()
{
    Pairs scene;
    const QStringList small{u"1 small.png"_s, u"2 small (twin).png"_s};
    auto *search = scene.find<QLineEdit>("searchLineEdit");
    scene.side()->setCurrentIndex(scene.side()->model()->index(1, 0));
    QSignalSpy listed(scene.side()->model(), &QAbstractItemModel::modelReset);
    for (const QString &typed : {u"t"_s, u"tw"_s, u"TWIN)"_s}) // of a member, and no pattern
        search->setText(typed);
    QTRY_COMPARE(scene.side()->model()->rowCount(), 1);
    QCOMPARE(listed.count(), 1);
    QCOMPARE(Scene::rows(scene.main()), small);
    // The selected group stays selected, wherever it goes.
    search->clear();
    QTRY_COMPARE(scene.side()->currentIndex().row(), 1);
    QCOMPARE(Scene::rows(scene.main()), small);
    search->setText(u"nothing"_s);
    QTRY_COMPARE(scene.main()->model()->rowCount(), 0);
    QVERIFY(!scene.find<QWidget>("RecycleBinButton")->isEnabled());
    search->setText(u"ELSEWHERE"_s); // a folder
    QTRY_COMPARE(Scene::rows(scene.main()), QStringList({u"1 large.png"_s, u"2 large (copy).png"_s}));
    QTest::keyClick(scene.main(), Qt::Key_F, Qt::ControlModifier);
    QVERIFY(search->hasFocus());
}

// The group that a question is about stays on the screen until it is answered.
void LookAlikeResultsTest::searchWaitsForAnAnswer()
{
    Trio scene;
    scene.dialogs.whileOpen = [&scene] {
        QTest::qWait(300);
        QCOMPARE(scene.main()->model()->rowCount(), 3);
    };
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.select(2);
    scene.find<QLineEdit>("searchLineEdit")->setText(u"nothing"_s);
    scene.recycle()->click();
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(scene.bin.taken, QStringList({scene.third}));
    QTRY_COMPARE(scene.main()->model()->rowCount(), 0);
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

void LookAlikeResultsTest::refreshLooksAtTheDisk()
{
    Pairs scene;
    const auto gone = [&scene](int row) {
        return scene.side()->model()->index(row, 0).data(ImageGroupModel::GoneRole).toBool();
    };
    const QString other = scene.folder.path(u"1 small.png"_s);
    const QString shown = scene.folder.path(u"elsewhere\\2 large (copy).png"_s);
    for (const QString &path : {other, shown}) {
        requireBelow(scene.folder.path(), path);
        QVERIFY(QFile::remove(path));
    }
    QVERIFY(!gone(1));
    QTest::keyClick(scene.main(), Qt::Key_F5);
    QTRY_VERIFY(gone(1));
    QVERIFY(!gone(0));
    QTRY_VERIFY(scene.main()->model()->index(1, 0).data(ImageMemberModel::GoneRole).toBool());
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

void LookAlikeResultsTest::severalGroupsOpenTheirFirstPicturesThatAreLeft()
{
    Pairs scene;
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.select(0);
    scene.find<QToolButton>("RecycleBinButton")->click();
    QTRY_VERIFY(!scene.form->isBusy());
    // From the last one upwards: what is done follows the list.
    scene.side()->setCurrentIndex(scene.side()->model()->index(1, 0));
    QTest::keyClick(scene.side(), Qt::Key_Up, Qt::ShiftModifier);
    emit scene.side()->customContextMenuRequested({});
    const QList<QAction *> actions = scene.find<QMenu>("groupMenu")->actions();
    const QStringList lefts{scene.folder.path(u"elsewhere\\2 large (copy).png"_s),
                            scene.folder.path(u"1 small.png"_s)};
    QCOMPARE(actions[0]->text(), u"Open the First File of Each"_s);
    actions[0]->trigger();
    QCOMPARE(scene.shell.opened, lefts);
    QCOMPARE(actions[1]->text(), u"Show the First File of Each in Explorer"_s);
    actions[1]->trigger();
    QCOMPARE(scene.shell.revealed, lefts);
}

QTEST_MAIN(LookAlikeResultsTest)
#include "tst_look_alike_results.moc"
