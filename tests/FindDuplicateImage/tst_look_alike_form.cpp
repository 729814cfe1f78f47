// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageNoResultFoundForm.h"
#include "FindDuplicateImage/FindDuplicateImageResultForm.h"
#include "FindDuplicateImage/FindDuplicateImageScanInfoForm.h"
#include "FindDuplicateImage/FindDuplicateImageStartForm.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "imaging/ThumbnailFile.h"
#include "imaging/engine/ThumbnailStore.h"
#include "tests/FindDuplicateImage/Scene.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NoticeBar.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tests;

namespace
{

constexpr int quickly = 20'000; // ms; a decoder that hangs is given three times as long

void saveTwins(const Scene &scene)
{
    scene.save(u"one.png"_s, blocks(1));
    scene.save(u"two.png"_s, blocks(1));
}

QStringList thumbnailFiles(const Scene &scene)
{
    return QDir(imaging::ThumbnailStore::folder(scene.temporary.path())).entryList(QDir::Files);
}

// Scans a picture that is being decoded, and will be for long.
void beginHanging(const Scene &scene)
{
    const QString asked = scene.save(u"hang.png"_s, blocks(1)) + u".asked"_s; // a byte for each time
    const qint64 before = QFileInfo(asked).size();
    scene.form->scan(scene.folder.path());
    QTRY_VERIFY(QFileInfo(asked).size() > before);
    QVERIFY(scene.form->isBusy() && !scene.form->busyText().isEmpty());
}

} // namespace

class LookAlikeFormTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { imaging::ThumbnailStore::noteRemoved(); }

    void startPage();
    void findsCopiesInOtherFormatsAndSizes();
    void survivesHostileFilesAndAMissingDecoder();
    void nothingFound();
    void workerSignals();
    void cancelDuringADecoding();
    void aFinishedScanIsNotThrownAway();
    void aCrashedRunLeavesNoThumbnails();
    void closesWhenAScanIsStoppedForIt();
    void theFormMayGoDuringAScan();
    void keepsThumbnailsInItsOwnFolder();
    void keepsNoThumbnailsBehindALink();
    void takesItsEmptyFolderAlong();
    void removesNoFolderBehindALink();
};

void LookAlikeFormTest::startPage()
{
    Scene scene;
    QCOMPARE(scene.find<ElidedLabel>("titleLabel")->text(), u"Find all duplicate images"_s);
    QCOMPARE(scene.find<QLabel>("dropLabel")->text(), u"Drop folders here"_s);
    auto *select = scene.find<QPushButton>("selectFolderButton");
    QCOMPARE(select->text(), u"Select Folder"_s);
    QVERIFY(select->hasFocus());
    QVERIFY(!scene.form->isBusy());
    QVERIFY(scene.form->busyText().isEmpty());
    scene.dialogs.nextFolder.append({QString(), scene.folder.path() + u'\\'}); // the first is cancelled
    QTest::keyClick(scene.form.get(), Qt::Key_O, Qt::ControlModifier);
    QTRY_COMPARE(scene.dialogs.fileDialogs.size(), 1);
    QVERIFY(!scene.form->isBusy());
    saveTwins(scene);
    QSignalSpy shown(scene.form.get(), &FindDuplicateImageForm::resultsShown);
    QTest::mouseClick(select, Qt::LeftButton);
    QVERIFY(scene.form->isBusy());
    QCOMPARE(scene.toolbar, QList<bool>({false}));
    QCOMPARE(scene.find<QLabel>("scanTitleLabel")->text(), u"Scanning in progress. Please wait ..."_s);
    QVERIFY(shown.wait(30'000));
    QCOMPARE(scene.form->findChild<FindDuplicateImageResultForm *>()->report().root, scene.folder.path());
    QTest::mouseClick(scene.find<QAbstractButton>("backButton"), Qt::LeftButton);
    // What is said of a drop comes after the folder, and is shown with the result.
    auto *start = scene.form->findChild<FindDuplicateImageStartForm *>();
    emit start->folderDropped(scene.folder.path());
    emit start->othersLeftOut(u"Only this one"_s);
    QVERIFY(scene.form->isBusy());
    QVERIFY(shown.wait(30'000));
    const auto *notice = scene.form->findChild<FindDuplicateImageResultForm *>()->findChild<NoticeBar *>();
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), u"Only this one"_s);
}

void LookAlikeFormTest::findsCopiesInOtherFormatsAndSizes()
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
    QVERIFY(scene.scan());

    // Largest first member first.
    QCOMPARE(Scene::rows(scene.side()), QStringList({u"big1.bmp"_s, u"first.png"_s}));
    QCOMPARE(Scene::rows(scene.main()), QStringList({u"big1.bmp"_s, u"big2.png"_s}));
    scene.side()->setCurrentIndex(scene.side()->model()->index(1, 0));
    QCOMPARE(Scene::rows(scene.main()),
             QStringList({u"first.png"_s, u".hidden.png"_s, u"uncompressed.BMP"_s, u"compressed.jpg"_s}));
    const QModelIndex last = scene.main()->model()->index(3, 0);
    QCOMPARE(last.data(ImageMemberModel::FolderRole).toString(), scene.folder.path(u"d"_s));
    QVERIFY(last.data(ImageMemberModel::FactsRole).toString().startsWith(u"800 \u00d7 600, JPEG, "));
    QVERIFY(last.data(ImageMemberModel::DateRole)
                .toString()
                .contains(QString::number(QDate::currentDate().year())));
    QVERIFY(scene.find<QLabel>("scanTitleLabel")->text().startsWith(u"Preparing report. Please wait..."));
    QVERIFY(scene.toolbarIsBack());
    QVERIFY(!scene.form->isBusy());

    QTest::mouseClick(scene.find<QAbstractButton>("backButton"), Qt::LeftButton);
    QVERIFY(scene.find<QWidget>("selectFolderButton")->isVisible());
}

void LookAlikeFormTest::survivesHostileFilesAndAMissingDecoder()
{
    for (const bool isThere : {true, false}) {
        Scene scene(isThere ? doublesProgram() : u"C:\\nowhere\\LarkspurDecoder.exe"_s);
        saveTwins(scene);
        scene.save(u"crash.png"_s, blocks(1)); // what the names say, only the double does
        scene.save(u"nonsense.png"_s, blocks(1));
        QVERIFY(scene.scan());
        QCOMPARE(Scene::rows(scene.main()).size(), isThere ? 2 : 4);
        const QString totals = scene.find<ElidedLabel>("resultTotalsLabel")->text();
        QCOMPARE(totals.contains(u"without its protection"_s), !isThere);
    }
}

void LookAlikeFormTest::nothingFound()
{
    Scene scene;
    scene.save(u"one.png"_s, blocks(1));
    scene.save(u"two.png"_s, blocks(2));
    QSignalSpy shown(scene.form.get(), &FindDuplicateImageForm::noResultShown);
    scene.form->scan(scene.folder.path());
    QVERIFY(shown.wait(30'000));
    auto *page = scene.form->findChild<FindDuplicateImageNoResultFoundForm *>();
    QVERIFY(page->isVisible());
    const auto texts = [page] {
        QStringList all;
        for (const QLabel *label : page->findChildren<QLabel *>())
            all.append(label->text());
        return all.join(u'|');
    };
    QVERIFY2(texts().contains(u"No Duplicate Files Found"_s), qPrintable(texts()));
    ImageReport report;
    report.placeholders = 3;
    page->showScan(report);
    QVERIFY2(texts().contains(u"3 only in the cloud"_s), qPrintable(texts()));
    QVERIFY(scene.toolbarIsBack());
    QVERIFY(thumbnailFiles(scene).isEmpty());
    auto *back = page->findChild<QPushButton *>();
    QCOMPARE(back->text(), u"Back"_s);
    QTest::mouseClick(back, Qt::LeftButton);
    QVERIFY(scene.find<QWidget>("selectFolderButton")->isVisible());
}

void LookAlikeFormTest::workerSignals()
{
    const Scene scene;
    scene.save(u"a\\one.png"_s, blocks(1));
    scene.save(u"b\\two.png"_s, blocks(1));
    ImageScanJob job;
    job.root = scene.folder.path();
    job.enumerator = std::make_unique<platform::Win32Enumerator>();
    job.decoders = std::make_shared<imaging::DecoderPool>(imaging::DecoderPool::Options{realDecoder()});
    job.thumbnails = std::make_shared<imaging::ThumbnailFile>(scene.temporary.path());
    FindDuplicateImageThread thread(std::move(job));
    QSignalSpy total(&thread, &FindDuplicateImageThread::updateTotalSubFolder);
    QSignalSpy steps(&thread, &FindDuplicateImageThread::updateScanProgress);
    QSignalSpy paths(&thread, &FindDuplicateImageThread::updatePath);
    QSignalSpy items(&thread, &FindDuplicateImageThread::updateTotalItemScan);
    QSignalSpy finish(&thread, &FindDuplicateImageThread::scanFinish);
    thread.start();
    QVERIFY(finish.wait(30'000));
    QCOMPARE(total.first().first().toInt(), 3);
    QCOMPARE(steps.count(), 2);
    QCOMPARE(paths.count(), 2);
    QCOMPARE(items.count(), 4);
    QCOMPARE(thread.takeResult().groups.size(), 1U);
}

void LookAlikeFormTest::cancelDuringADecoding()
{
    Scene scene(doublesProgram());
    saveTwins(scene);
    beginHanging(scene);
    QSignalSpy start(scene.form.get(), &FindDuplicateImageForm::startPageShown);
    QTest::mouseClick(scene.find<QPushButton>("cancelButton"), Qt::LeftButton);
    QVERIFY(start.wait(quickly));
    QVERIFY(!scene.form->isBusy());
    QVERIFY(scene.toolbarIsBack());
    QVERIFY(thumbnailFiles(scene).isEmpty());

    // And the next scan is as good as the first.
    requireBelow(scene.folder.path(), scene.folder.path(u"hang.png"_s));
    QVERIFY(QFile::remove(scene.folder.path(u"hang.png"_s)));
    QVERIFY(scene.scan());
    QCOMPARE(Scene::rows(scene.main()).size(), 2);
}

// A cancel that comes after the scan has ended finds nothing to cancel.
void LookAlikeFormTest::aFinishedScanIsNotThrownAway()
{
    Scene scene;
    saveTwins(scene);
    const auto *page = scene.form->findChild<FindDuplicateImageResultForm *>();
    connect(page, &FindDuplicateImageResultForm::prepareReportUpdatePath, scene.form.get(),
            [&] { scene.form->handleScanCancel(); });
    QVERIFY(scene.scan());
    QVERIFY(!scene.form->isBusy() && scene.toolbarIsBack());
    // Nor by a step back.
    QTest::mouseClick(scene.find<QAbstractButton>("backButton"), Qt::LeftButton);
    QVERIFY(!page->isVisible());
    auto *show = scene.form->findChild<FindDuplicateImageStartForm *>()->findChild<QAbstractButton *>(
        u"noticeActionButton"_s);
    QVERIFY(show && show->isVisible());
    show->click();
    QVERIFY(page->isVisible());
    QCOMPARE(page->report().groups.size(), std::size_t(1));
}

void LookAlikeFormTest::aCrashedRunLeavesNoThumbnails()
{
    const tests::TestFolder temporary;
    temporary.makeFile(u"Fernlight Larkspur\\Thumbnails\\Lookalikes-1.thumbnails"_s);
    temporary.makeFile(u"Fernlight Larkspur\\Thumbnails\\other.txt"_s);
    imaging::ThumbnailFile::clearLeftovers(temporary.path());
    const QString folder = imaging::ThumbnailStore::folder(temporary.path());
    QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList(u"other.txt"_s));
}

void LookAlikeFormTest::closesWhenAScanIsStoppedForIt()
{
    Scene scene(doublesProgram());
    QSignalSpy start(scene.form.get(), &FindDuplicateImageForm::startPageShown);
    QList<bool> busy;
    connect(scene.form.get(), &FLWidget::closeApp, scene.form.get(),
            [&] { busy.append(scene.form->isBusy()); });
    scene.form->requestStop(); // nothing runs
    beginHanging(scene);
    scene.form->requestStop();
    QVERIFY(busy.isEmpty());
    QVERIFY(start.wait(quickly));
    QTRY_COMPARE(busy, QList<bool>({false}));
    // Whoever only cancels the next one stays.
    beginHanging(scene);
    QTest::mouseClick(scene.find<QPushButton>("cancelButton"), Qt::LeftButton);
    QVERIFY(start.wait(quickly));
    QCOMPARE(busy.size(), 1);
}

void LookAlikeFormTest::theFormMayGoDuringAScan()
{
    Scene scene(doublesProgram());
    beginHanging(scene);
    QElapsedTimer clock;
    clock.start();
    scene.form.reset();
    QVERIFY2(clock.elapsed() < quickly, qPrintable(QString::number(clock.elapsed())));
    QVERIFY(thumbnailFiles(scene).isEmpty());
}

void LookAlikeFormTest::keepsThumbnailsInItsOwnFolder()
{
    Scene scene;
    saveTwins(scene);
    scene.save(u"three.png"_s, blocks(2));
    scene.save(u"four.png"_s, blocks(2));
    const QString earlier = u"earlier.thumbnails"_s;
    scene.temporary.makeFile(u"Fernlight Larkspur\\Thumbnails\\"_s + earlier);
    for (const bool removed : {false, true}) {
        QVERIFY(scene.scan());
        QVERIFY(imaging::ThumbnailStore::produced());
        QStringList files = thumbnailFiles(scene);
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
        QTest::mouseClick(scene.find<QAbstractButton>("backButton"), Qt::LeftButton);
        QCOMPARE(thumbnailFiles(scene).size(), removed ? 1 : 2);
    }
    QVERIFY(scene.scan());
    scene.form.reset();
    QCOMPARE(thumbnailFiles(scene), QStringList({earlier}));
}

void LookAlikeFormTest::keepsNoThumbnailsBehindALink()
{
    Scene scene;
    saveTwins(scene);
    const QString elsewhere = scene.temporary.makeFolder(u"elsewhere"_s);
    scene.temporary.makeLink(u"Fernlight Larkspur"_s, u"elsewhere"_s);
    QVERIFY(scene.scan());
    QCOMPARE(Scene::rows(scene.main()).size(), 2);
    QVERIFY(QDir(elsewhere + u"\\Thumbnails"_s).entryList(QDir::Files).isEmpty());
    QVERIFY(!imaging::ThumbnailStore::produced());
}

void LookAlikeFormTest::takesItsEmptyFolderAlong()
{
    const TestFolder temporary;
    const QString folder = imaging::ThumbnailStore::folder(temporary.path());
    auto first = std::make_unique<imaging::ThumbnailFile>(temporary.path());
    auto second = std::make_unique<imaging::ThumbnailFile>(temporary.path());
    // As the main window does while a scan still writes.
    requireBelow(temporary.path(), first->fileName());
    QVERIFY(!QFile::remove(first->fileName()));
    second.reset();
    QVERIFY(QFile::exists(first->fileName()));
    first.reset();
    QVERIFY(!QDir(folder).exists());
    QVERIFY(QDir(temporary.path()).exists());
}

void LookAlikeFormTest::removesNoFolderBehindALink()
{
    TestFolder temporary;
    const QString elsewhere = temporary.makeFolder(u"elsewhere\\Thumbnails"_s);
    auto file = std::make_unique<imaging::ThumbnailFile>(temporary.path());
    file->close({});
    // Replaced behind its back.
    const QDir folder(imaging::ThumbnailStore::folder(temporary.path()));
    requireBelow(temporary.path(), file->fileName());
    QVERIFY(QFile::remove(file->fileName()));
    QVERIFY(QDir(temporary.path()).rmpath(QDir(temporary.path()).relativeFilePath(folder.path())));
    temporary.makeLink(u"Fernlight Larkspur"_s, u"elsewhere"_s);
    QVERIFY(folder.exists());
    file.reset();
    QVERIFY(QDir(elsewhere).exists());
}

QTEST_MAIN(LookAlikeFormTest)
#include "tst_look_alike_form.moc"
