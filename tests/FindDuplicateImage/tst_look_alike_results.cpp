// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ComparePane.h"
#include "FindDuplicateImage/CompareView.h"
#include "FindDuplicateImage/ImageGroupModel.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "FindDuplicateImage/LatestTask.h"
#include "tests/FindDuplicateImage/Trio.h"
#include "widgets/ElidedLabel.h"

#include <QLineEdit>
#include <QSemaphore>
#include <QToolButton>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using tests::blocks;
using tests::Scene;
using tests::Trio;

class LookAlikeResultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }

    void showsWhatThereIs();
    void searchByName();
    void openAndReveal();
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
