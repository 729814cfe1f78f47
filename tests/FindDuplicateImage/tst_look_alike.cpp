// SPDX-License-Identifier: GPL-3.0-or-later

// What the finder of pictures has of its own. The groups page that it shares with the finder of files is
// tested there.

#include "FindDuplicateImage/ComparePane.h"
#include "FindDuplicateImage/CompareView.h"
#include "FindDuplicateImage/FindDuplicateImageNoResultFoundForm.h"
#include "FindDuplicateImage/FindDuplicateImageStartForm.h"
#include "FindDuplicateImage/ImageGroupModel.h"
#include "imaging/ThumbnailCache.h"
#include "imaging/ThumbnailFile.h"
#include "imaging/engine/ThumbnailStore.h"
#include "tests/FindDuplicateImage/Scene.h"
#include "tests/support/FakeFileProbe.h"
#include "widgets/ElidedLabel.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QPixmap>
#include <QPushButton>
#include <QToolButton>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using namespace tests;

namespace
{

constexpr int quickly = 20'000; // ms; a decoder that hangs is given three times as long

QStringList thumbnailFiles(const TestFolder &temporary)
{
    return QDir(imaging::ThumbnailStore::folder(temporary.path())).entryList(QDir::Files);
}

// Scans a picture that is being decoded, and will be for long.
void beginHanging(const Scene &scene)
{
    const QString asked = scene.save(u"hang.png"_s, blocks(1)) + u".asked"_s; // a byte for each time
    scene.form->scan(scene.folder.path());
    QTRY_VERIFY(QFileInfo(asked).size() > 0);
    QVERIFY(scene.form->isBusy() && !scene.form->busyText().isEmpty());
}

} // namespace

class LookAlikeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { requireTestPrefix(); }
    void init() { imaging::ThumbnailStore::noteRemoved(); }

    void findsCopiesAndKeepsTheResult();
    void survivesHostileFilesAndAMissingDecoder();
    void nothingFound();
    void nobodyWaitsForADecoder();
    void keepsThumbnailsInItsOwnFolder();
    void keepsNothingBehindALink();
    void thumbnailsTakeTheirFolderAlong();
    void notes_data();
    void notes();
    void comparesTwoPictures();
    void zoom();
    void removesTheSelectedPicture();
};

void LookAlikeTest::findsCopiesAndKeepsTheResult()
{
    Scene scene;
    const QImage picture = blocks(1, {800, 600});
    scene.save(u"a\\first.png"_s, picture);
    scene.save(u"b\\.hidden.png"_s, picture.scaled(400, 300));
    scene.save(u"c\\uncompressed.BMP"_s, picture);
    scene.save(u"d\\compressed.jpg"_s, picture);
    scene.save(u"e\\other.png"_s, blocks(2));
    scene.save(u"g\\big1.bmp"_s, blocks(3, {1200, 1000}));
    scene.save(u"g\\big2.png"_s, blocks(3, {1200, 1000}));
    QVERIFY(scene.find<QPushButton>("selectFolderButton")->hasFocus());
    scene.dialogs.nextFolder.append({QString(), scene.folder.path() + u'\\'});
    scene.click("selectFolderButton");
    QVERIFY(!scene.form->isBusy()); // cancelled
    // A cancel that comes after the scan has ended finds nothing to cancel.
    const FindDuplicateImageResultForm *page = scene.results();
    connect(page, &FindDuplicateImageResultForm::prepareReportUpdatePath, scene.form.get(),
            [&] { scene.form->handleScanCancel(); });
    QSignalSpy shown(scene.form.get(), &FindDuplicateImageForm::resultsShown);
    scene.click("selectFolderButton");
    QCOMPARE(scene.find<QLabel>("scanTitleLabel")->text(), u"Scanning in progress. Please wait ..."_s);
    QVERIFY(shown.wait(30'000));
    QVERIFY(!scene.form->isBusy());
    QCOMPARE(scene.find<QLabel>("scanTitleLabel")->text(), u"Preparing report. Please wait..."_s);
    QCOMPARE(page->report().root, scene.folder.path());

    // Largest first member first.
    QCOMPARE(Scene::rows(scene.side()), QStringList({u"big1.bmp"_s, u"first.png"_s}));
    QCOMPARE(Scene::rows(scene.main()), QStringList({u"big1.bmp"_s, u"big2.png"_s}));
    scene.side()->setCurrentIndex(scene.side()->model()->index(1, 0));
    QCOMPARE(Scene::rows(scene.main()),
             QStringList({u"first.png"_s, u".hidden.png"_s, u"uncompressed.BMP"_s, u"compressed.jpg"_s}));
    const QModelIndex last = scene.main()->model()->index(3, 0);
    QCOMPARE(last.data(ImageMemberModel::FolderRole).toString(), scene.folder.path(u"d"_s));
    QVERIFY(last.data(ImageMemberModel::FactsRole).toString().startsWith(u"800 \u00d7 600, JPEG, "));

    scene.click("backButton");
    QVERIFY(!page->isVisible());
    auto *start = scene.form->findChild<FindDuplicateImageStartForm *>();
    start->findChild<QAbstractButton *>(u"noticeActionButton"_s)->click();
    QVERIFY(page->isVisible());
    QCOMPARE(page->report().groups.size(), std::size_t(2));
    // What is said of a drop comes after the folder, and is shown with the result, which has its own order.
    auto *order = scene.find<QComboBox>("orderComboBox");
    order->setCurrentIndex(order->count() - 1);
    emit start->folderDropped(scene.folder.path());
    emit start->othersLeftOut(u"Only this one"_s);
    QVERIFY(shown.wait(30'000));
    QCOMPARE(scene.notice(), u"Only this one"_s);
    QCOMPARE(order->currentText(), u"Largest file first"_s);
}

void LookAlikeTest::survivesHostileFilesAndAMissingDecoder()
{
    for (const bool isThere : {true, false}) {
        Scene scene(isThere ? doublesProgram() : u"C:\\nowhere\\LarkspurDecoder.exe"_s);
        scene.saveTwins();
        scene.save(u"crash.png"_s, blocks(1)); // what the names say, only the double does
        scene.save(u"nonsense.png"_s, blocks(1));
        QVERIFY(scene.scan());
        QCOMPARE(Scene::rows(scene.main()).size(), isThere ? 2 : 4);
        const QString totals = scene.find<ElidedLabel>("resultTotalsLabel")->text();
        QCOMPARE(totals.contains(u"without its protection"_s), !isThere);
    }
}

void LookAlikeTest::nothingFound()
{
    Scene scene;
    scene.save(u"one.png"_s, blocks(1));
    scene.save(u"two.png"_s, blocks(2));
    QSignalSpy shown(scene.form.get(), &FindDuplicateImageForm::noResultShown);
    scene.form->scan(scene.folder.path());
    QVERIFY(shown.wait(30'000));
    auto *page = scene.form->findChild<FindDuplicateImageNoResultFoundForm *>();
    QVERIFY(page->isVisible());
    QVERIFY(thumbnailFiles(scene.temporary).isEmpty());
    ImageReport report;
    report.placeholders = 3;
    page->showScan(report);
    QString texts;
    for (const QLabel *label : page->findChildren<QLabel *>())
        texts += label->text();
    QVERIFY2(texts.contains(u"3 only in the cloud"_s), qPrintable(texts));
    page->findChild<QPushButton *>()->click();
    QVERIFY(scene.find<QWidget>("selectFolderButton")->isVisible());
}

void LookAlikeTest::nobodyWaitsForADecoder()
{
    for (const bool cancelled : {true, false}) {
        Scene scene(doublesProgram());
        scene.saveTwins();
        beginHanging(scene);
        QElapsedTimer clock;
        clock.start();
        if (!cancelled) {
            scene.form.reset();
            QVERIFY2(clock.elapsed() < quickly, qPrintable(QString::number(clock.elapsed())));
            QVERIFY(thumbnailFiles(scene.temporary).isEmpty());
            return;
        }
        QSignalSpy start(scene.form.get(), &FindDuplicateImageForm::startPageShown);
        scene.click("cancelButton");
        QVERIFY(start.wait(quickly));
        QVERIFY(!scene.form->isBusy());
        QVERIFY(thumbnailFiles(scene.temporary).isEmpty());
        // And the next scan is as good as the first.
        requireBelow(scene.folder.path(), scene.folder.path(u"hang.png"_s));
        QVERIFY(QFile::remove(scene.folder.path(u"hang.png"_s)));
        QVERIFY(scene.scan());
        QCOMPARE(Scene::rows(scene.main()).size(), 2);
    }
}

void LookAlikeTest::keepsThumbnailsInItsOwnFolder()
{
    Scene scene;
    scene.saveTwins();
    scene.save(u"three.png"_s, blocks(2));
    scene.save(u"four.png"_s, blocks(2));
    const QString earlier = u"earlier.thumbnails"_s;
    scene.temporary.makeFile(u"Fernlight Larkspur\\Thumbnails\\"_s + earlier);
    for (const bool removed : {false, true}) {
        QVERIFY(scene.scan());
        QVERIFY(imaging::ThumbnailStore::produced());
        QStringList files = thumbnailFiles(scene.temporary);
        QVERIFY(files.removeOne(earlier));
        QCOMPARE(files.size(), 1);
        if (removed) {
            // As the main window does while it closes: the file is not held open.
            const QString file =
                imaging::ThumbnailStore::folder(scene.temporary.path()) + u'/' + files.first();
            requireBelow(scene.temporary.path(), file);
            QVERIFY(QFile::remove(file));
        }
        scene.side()->setCurrentIndex(scene.side()->model()->index(1, 0));
        const QModelIndex picture = scene.main()->model()->index(1, 0);
        QCOMPARE(picture.data(Qt::DecorationRole).value<QPixmap>().isNull(), removed);
        scene.form->grab();
        // They stay with the result, until the next one or the end.
        scene.click("backButton");
        QCOMPARE(thumbnailFiles(scene.temporary).size(), removed ? 1 : 2);
    }
    QVERIFY(scene.scan());
    scene.form.reset();
    QCOMPARE(thumbnailFiles(scene.temporary), QStringList({earlier}));
}

void LookAlikeTest::keepsNothingBehindALink()
{
    Scene scene;
    scene.saveTwins();
    const QString elsewhere = scene.temporary.makeFolder(u"elsewhere"_s);
    scene.temporary.makeLink(u"Fernlight Larkspur"_s, u"elsewhere"_s);
    QVERIFY(scene.scan());
    QCOMPARE(Scene::rows(scene.main()).size(), 2);
    QVERIFY(QDir(elsewhere + u"\\Thumbnails"_s).entryList(QDir::Files).isEmpty());
    QVERIFY(!imaging::ThumbnailStore::produced());
}

void LookAlikeTest::thumbnailsTakeTheirFolderAlong()
{
    TestFolder temporary;
    const QDir folder(imaging::ThumbnailStore::folder(temporary.path()));
    const QString crashed = u"Fernlight Larkspur\\Thumbnails\\Lookalikes-1.thumbnails"_s;
    temporary.makeFile(crashed);
    const QString other = temporary.makeFile(u"Fernlight Larkspur\\Thumbnails\\other.txt"_s);
    imaging::ThumbnailFile::clearLeftovers(temporary.path());
    QCOMPARE(thumbnailFiles(temporary), QStringList(u"other.txt"_s));
    requireBelow(temporary.path(), other);
    QVERIFY(QFile::remove(other));
    auto first = std::make_unique<imaging::ThumbnailFile>(temporary.path());
    auto second = std::make_unique<imaging::ThumbnailFile>(temporary.path());
    second.reset();
    QVERIFY(QFile::exists(first->fileName()));
    first.reset();
    QVERIFY(!folder.exists() && QDir(temporary.path()).exists());
    // Unless another one was put in its place.
    const QString elsewhere = temporary.makeFolder(u"elsewhere\\Thumbnails"_s);
    first = std::make_unique<imaging::ThumbnailFile>(temporary.path());
    first->close({});
    requireBelow(temporary.path(), first->fileName());
    QVERIFY(QFile::remove(first->fileName()));
    QVERIFY(QDir(temporary.path()).rmpath(QDir(temporary.path()).relativeFilePath(folder.path())));
    temporary.makeLink(u"Fernlight Larkspur"_s, u"elsewhere"_s);
    QVERIFY(folder.exists());
    first.reset();
    QVERIFY(QDir(elsewhere).exists());
}

void LookAlikeTest::notes_data()
{
    using duplicates::MemberFacts;
    QTest::addColumn<MemberFacts>("facts"); // of the second of three, which is the largest
    QTest::addColumn<QString>("note");
    QTest::addColumn<quint64>("spare"); // bytes, of 1, 10 and 100
    const duplicates::MemberMark there{true, false, -1};
    QTest::newRow("as it was") << MemberFacts{there} << u"Proposed to keep"_s << quint64(101);
    QTest::newRow("gone") << MemberFacts{} << u"The file was moved to another location"_s << quint64(100);
    QTest::newRow("last copy") << MemberFacts{{true, true, -1}} << u"Last copy"_s << quint64(101);
    QTest::newRow("changed") << MemberFacts{there, {}, true} << u"Changed since the scan"_s << quint64(100);
    QTest::newRow("behind a link") << MemberFacts{there, {}, false, true} << u"Reached through a link"_s
                                   << quint64(100);
    QTest::newRow("all that may be") << MemberFacts{{true, true, -1}, {}, true, true}
                                     << u"Last copy; Changed since the scan; Reached through a link"_s
                                     << quint64(100);
    QTest::newRow("in the cloud") << MemberFacts{there, {}, false, false, true} << u"In the cloud"_s
                                  << quint64(101);
    QTest::newRow("the same file") << MemberFacts{{true, false, 0}} << u"Same file as 0.png in C:\\r"_s
                                   << quint64(100);
}

void LookAlikeTest::notes()
{
    QFETCH(duplicates::MemberFacts, facts);
    ImageReport report;
    report.groups.resize(1);
    for (int i = 0; i < 3; ++i) {
        lookalikes::ImageRecord image;
        image.name = u"%1.png"_s.arg(i);
        image.walkedFolder = u"C:\\r"_s;
        image.width = image.height = i == 1 ? 200 : 100 - i;
        image.size = i == 0 ? 1 : i == 1 ? 10 : 100;
        report.groups[0].members.push_back(image);
    }
    imaging::ThumbnailCache thumbnails;
    ImageMemberModel model(thumbnails, nullptr);
    model.setGroup(&report, 0);
    const auto note = [&](int row) {
        return model.index(row, 0).data(ImageMemberModel::NoteRole).toString();
    };
    QCOMPARE(note(1), u"Proposed to keep"_s);
    const duplicates::MemberFacts there{{true, false, -1}};
    model.setFacts({there, facts, there});
    QTEST(note(1), "note");
    QTEST(model.spareBytes(), "spare");
    // What is no copy any more is not to be kept instead of one.
    const bool isCopy = facts.mark.exists && !facts.changed && !facts.throughLink;
    QCOMPARE(note(0), isCopy ? QString() : u"Proposed to keep"_s);
    report.groups[0].members[1].checked = true;
    model.membersChanged();
    QCOMPARE(note(1), u"Moved to the recycle bin"_s);
    QCOMPARE(note(0), u"Proposed to keep"_s);
    report.groups[0].members[2].checked = true;
    model.membersChanged();
    QVERIFY(note(0).isEmpty()); // nothing to choose from
}

void LookAlikeTest::comparesTwoPictures()
{
    FakeFileProbe probe;
    Trio scene;
    auto *view = scene.form->findChild<CompareView *>();
    QSignalSpy shown(scene.form->findChild<ComparePane *>(), &ComparePane::shown);
    const auto compared = [&](const QString &first, const QString &second) {
        return QTest::qWaitFor(
            [&] { return view->pair().first.path == first && view->pair().second.path == second; }, 20'000);
    };
    QVERIFY(compared(scene.first, scene.second)); // without a selection
    // One after the other, faster than they load: the last one counts.
    for (const int row : {1, 0, 2})
        scene.select(row);
    QVERIFY(compared(scene.first, scene.third));
    QCOMPARE(view->pair().first.full.size(), QSize(600, 400));
    QVERIFY(scene.find<ElidedLabel>("secondPictureLabel")->text().contains(u" % differs"));
    const QImage before = view->grab().toImage();
    scene.click("differenceButton");
    QVERIFY(view->showsDifference());
    QVERIFY(view->grab().toImage() != before);
    scene.select(1, QItemSelectionModel::Select);
    QVERIFY(compared(scene.second, scene.third));
    QVERIFY(!view->pair().difference.picture.isNull());
    scene.main()->selectAll(); // of three, the one selected last beside the first
    QVERIFY(compared(scene.first, scene.second));
    // The first picture has nothing to be compared with.
    scene.select(0);
    QVERIFY(compared(scene.first, {}));
    QTRY_VERIFY(!scene.isEnabled("differenceButton"));
    // Nothing is fetched from the cloud.
    probe.setAttributes(scene.third, core::AttributeRecallOnDataAccess);
    scene.select(2);
    QVERIFY(compared(scene.first, scene.third));
    QVERIFY(view->pair().second.inCloud && view->pair().second.full.isNull());
    QVERIFY(!view->pair().first.full.isNull());
    // One that cannot be read any more says so.
    requireBelow(scene.folder.path(), scene.second);
    QVERIFY(QFile::remove(scene.second));
    shown.clear();
    scene.select(1);
    QVERIFY(shown.wait(20'000));
    QVERIFY(view->pair().second.full.isNull());
    view->grab();
}

void LookAlikeTest::zoom()
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

void LookAlikeTest::removesTheSelectedPicture()
{
    Trio scene;
    const auto detail = [&] {
        return scene.side()->model()->index(0, 0).data(ImageGroupModel::DetailRole).toString();
    };
    QVERIFY2(detail().startsWith(u"3 pictures, "), qPrintable(detail()));
    const auto totals = [&] { return scene.find<ElidedLabel>("resultTotalsLabel")->text(); };
    QVERIFY2(totals().startsWith(u"1 group with 3 of 4 pictures, "), qPrintable(totals()));
    // Only marked, and only compared: no button acts on what the user did not select.
    QCOMPARE(scene.note(1), u"Proposed to keep"_s);
    QCOMPARE(scene.main()->currentIndex().row(), 1);
    QVERIFY(!scene.main()->selectionModel()->hasSelection());
    QVERIFY(!scene.isEnabled("RecycleBinButton"));
    QTest::mouseDClick(scene.main()->viewport(), Qt::LeftButton, {},
                       scene.main()->visualRect(scene.main()->model()->index(0, 0)).center());
    QVERIFY(scene.shell.opened.isEmpty()); // what looks like a picture may be a program by its name
    // Nothing hides a move that failed, and it may be tried again.
    scene.bin.fails = true;
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.select(1);
    scene.click("RecycleBinButton");
    QTRY_VERIFY(!scene.form->isBusy());
    QVERIFY(scene.notice().contains(scene.second));
    QVERIFY(scene.isEnabled("RecycleBinButton") && QFile::exists(scene.second));
    scene.bin.fails = false;
    // One at a time: the one that is left selected counts, not the one that was clicked last.
    scene.select(0, QItemSelectionModel::Select);
    QVERIFY(!scene.isEnabled("RecycleBinButton"));
    scene.select(0, QItemSelectionModel::Deselect);
    scene.dialogs.nextMessageBox.enqueue(platform::idYes);
    scene.click("RecycleBinButton");
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(scene.bin.taken, QStringList({scene.second}));
    QCOMPARE(scene.note(1), u"Moved to the recycle bin"_s);
    QVERIFY(detail().startsWith(u"2 of 3 pictures left"));
    QVERIFY(totals().startsWith(u"1 group with 2 of 4 pictures, "));
    // All that is left to do with it, in the menu as in the tool bar.
    QVERIFY(!scene.isEnabled("openButton"));
    emit scene.main()->customContextMenuRequested(
        scene.main()->visualRect(scene.main()->model()->index(1, 0)).center());
    auto *menu = scene.find<QMenu>("memberMenu");
    QStringList usable;
    for (const QAction *action : menu->actions())
        if (action->isEnabled() && !action->isSeparator())
            usable.append(action->text());
    QCOMPARE(usable, QStringList({u"Copy Path"_s}));
    menu->close();
    // A removed one among others is passed over.
    scene.main()->selectAll();
    scene.click("openButton");
    QCOMPARE(scene.shell.opened, QStringList({scene.first, scene.third}));
}

QTEST_MAIN(LookAlikeTest)
#include "tst_look_alike.moc"
