// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/BiggestFilesModel.h"
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageForm.h"
#include "DiskUsage/DiskUsageResultsForm.h"
#include "DiskUsage/FolderModel.h"
#include "tests/DiskUsage/Scene.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSemaphore>
#include <QToolButton>

#include <new>

namespace
{

constexpr int quickly = 5000; // ms; the slow scans take twice as long and more

const QString root = QStringLiteral("C:\\many");

// A form over many folders, and what it tells the main window.
struct Scene : tests::Scene {
    Scene()
    {
        for (int folder = 0; folder < 400; ++folder)
            for (int file = 0; file < 20; ++file)
                disk.addFile(root + QStringLiteral("\\d%1\\f%2.txt").arg(folder).arg(file), 1000);
        QObject::connect(form.get(), &FLWidget::showToolbarSignal, form.get(),
                         [this](bool show) { toolbar.append(show); });
    }

    bool isFree() const
    {
        return form->folderModel().rowCount() == 0 && form->biggestFilesModel().rowCount() == 0 &&
               form->dataFilesModel().categoryTotal() == 0 && !form->isBusy();
    }
    // Taken away as often as given back, and given back last.
    bool toolbarIsBack() const
    {
        return !toolbar.isEmpty() && toolbar.last() && toolbar.count(true) == toolbar.count(false);
    }

    QList<bool> toolbar;
};

} // namespace

class DiskUsageCancelTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void init() { m_guard = std::make_unique<tests::RegistryGuard>(); }
    void cleanup() { m_guard.reset(); }

    void atTheStart();
    void inTheMiddle();
    void atTheEnd();
    void byTheMainWindow();
    void ofAFolderScan();
    void theFormMayGoDuringAScan_data();
    void theFormMayGoDuringAScan();
    void theFormMayGoDuringAnExport();
    void aStopThatComesTooLateIsNoCancel();
    void aScanThatFailsEndsOnTheStartPage();
    void backFreesEverything();

private:
    std::unique_ptr<tests::RegistryGuard> m_guard;
};

void DiskUsageCancelTest::atTheStart()
{
    Scene scene;
    QSignalSpy start(scene.form.get(), &DiskUsageForm::startPageShown);
    scene.form->scan(root);
    QVERIFY(scene.form->isBusy());
    QVERIFY(scene.form->isScanning());
    QCOMPARE(scene.toolbar, QList<bool>({false}));
    scene.form->handleScanCancel();
    QVERIFY(start.wait(quickly));
    QVERIFY(scene.isFree());
    QVERIFY(scene.toolbarIsBack());
    // And the next scan is as good as the first.
    QVERIFY(scene.scan(root));
    QCOMPARE(scene.form->folderModel().rowCount(scene.form->folderModel().index(0, 0)), 400);
}

void DiskUsageCancelTest::inTheMiddle()
{
    Scene scene;
    QSemaphore reached;
    scene.disk.onList = [&reached](const QString &) {
        reached.release();
        QThread::msleep(50);
    };
    scene.form->scan(root);
    QVERIFY(reached.tryAcquire(20, 5000));
    QTRY_VERIFY(scene.find<QLabel>("itemsLabel")->text().toInt() > 0);
    QCOMPARE(scene.find<QLabel>("scanTitleLabel")->text(),
             QStringLiteral("Scanning in progress. Please wait ..."));
    QSignalSpy start(scene.form.get(), &DiskUsageForm::startPageShown);
    QElapsedTimer clock;
    clock.start();
    QTest::mouseClick(scene.find<QPushButton>("cancelButton"), Qt::LeftButton);
    QVERIFY(start.count() > 0 || start.wait(quickly));
    QVERIFY2(clock.elapsed() < quickly, qPrintable(QString::number(clock.elapsed())));
    QVERIFY(scene.isFree());
    QVERIFY(scene.toolbarIsBack());
}

void DiskUsageCancelTest::atTheEnd()
{
    Scene scene;
    QSignalSpy start(scene.form.get(), &DiskUsageForm::startPageShown);
    QSignalSpy results(scene.form.get(), &DiskUsageForm::resultsShown);
    scene.form->scan(root);
    QThread::sleep(1); // the worker ends; this thread has not heard of it
    scene.form->handleScanCancel();
    QVERIFY(start.wait());
    QCOMPARE(results.count(), 0);
    QVERIFY(scene.isFree());
    QVERIFY(scene.toolbarIsBack());
}

void DiskUsageCancelTest::byTheMainWindow()
{
    Scene scene;
    scene.disk.onList = [](const QString &) { QThread::msleep(50); };
    scene.form->scan(root);
    QVERIFY(!scene.form->busyText().isEmpty());
    QSignalSpy start(scene.form.get(), &DiskUsageForm::startPageShown);
    scene.form->requestStop();
    QVERIFY(start.wait(quickly));
    QVERIFY(scene.isFree());
    QVERIFY(scene.form->busyText().isEmpty());
    scene.form->requestStop(); // with nothing to stop
}

void DiskUsageCancelTest::ofAFolderScan()
{
    Scene scene;
    QVERIFY(scene.scan(root));
    scene.disk.onList = [](const QString &) { QThread::msleep(200); };
    const FolderModel &model = scene.form->folderModel();
    const QString before = model.index(0, FolderModel::MaxData).data().toString();
    QTreeView *tree = scene.tree();
    tree->setCurrentIndex(tree->model()->index(3, 0, tree->model()->index(0, 0)));
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_F5);
    QVERIFY(scene.form->isBusy());
    QCOMPARE(scene.toolbar.last(), false);
    QVERIFY(!scene.find<QToolButton>("backButton")->isEnabled());
    QTest::mouseClick(scene.find<QPushButton>("busyCancelButton"), Qt::LeftButton);
    QTRY_VERIFY(!scene.form->isBusy());
    QVERIFY(scene.toolbarIsBack());
    QCOMPARE(model.index(0, FolderModel::MaxData).data().toString(), before);
    QVERIFY(scene.find<QToolButton>("backButton")->isEnabled());
}

void DiskUsageCancelTest::theFormMayGoDuringAScan_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("at once") << 0;
    QTest::newRow("in the middle") << 50;
    QTest::newRow("when the worker has ended") << 1500;
}

void DiskUsageCancelTest::theFormMayGoDuringAScan()
{
    QFETCH(int, milliseconds);
    Scene scene;
    if (milliseconds < 1000)
        scene.disk.onList = [](const QString &) { QThread::msleep(50); };
    scene.form->scan(root);
    QThread::msleep(static_cast<unsigned long>(milliseconds));
    QElapsedTimer clock;
    clock.start();
    scene.form.reset();
    QVERIFY2(clock.elapsed() < quickly, qPrintable(QString::number(clock.elapsed())));
    QTest::qWait(50); // what was on its way to the form goes nowhere
}

void DiskUsageCancelTest::theFormMayGoDuringAnExport()
{
    const tests::TestFolder folder;
    const QString file = folder.path(QStringLiteral("folders.csv"));
    tests::FakeDialogs dialogs;
    Scene scene;
    for (int i = 0; i < 50'000; ++i)
        scene.disk.addFolder(root + QStringLiteral("\\d1\\e%1").arg(i));
    QVERIFY(scene.scan(root));
    dialogs.nextFileToSave.enqueue(file);
    QTest::mouseClick(scene.find<QPushButton>("exportButton"), Qt::LeftButton);
    auto *page = scene.form->findChild<DiskUsageResultsForm *>();
    QVERIFY(page->isExporting());
    page->detach(); // whoever takes the models away ends what reads them
    QVERIFY(!page->isExporting());
    QVERIFY(!QFile::exists(file));

    Scene next;
    QVERIFY(next.scan(root));
    dialogs.nextFileToSave.enqueue(file);
    QTest::mouseClick(next.find<QPushButton>("exportButton"), Qt::LeftButton);
    QVERIFY(next.form->isBusy());
    next.form.reset();
    QTest::qWait(50);
}

void DiskUsageCancelTest::aStopThatComesTooLateIsNoCancel()
{
    const tests::TestFolder folder;
    const QString file = folder.path(QStringLiteral("folders.csv"));
    tests::FakeDialogs dialogs;
    Scene scene;
    QVERIFY(scene.scan(root));
    dialogs.nextFileToSave.enqueue(file);
    QTest::mouseClick(scene.find<QPushButton>("exportButton"), Qt::LeftButton);
    for (int i = 0; i < 100 && !QFile::exists(file); ++i)
        QThread::msleep(50); // the worker ends; this thread has not heard of it
    QThread::msleep(100);
    scene.form->requestStop();
    QTRY_VERIFY(!scene.form->isBusy());
    QVERIFY(QFile::exists(file));
    QVERIFY(scene.notice().contains(QStringLiteral("401 rows")));
}

void DiskUsageCancelTest::aScanThatFailsEndsOnTheStartPage()
{
    Scene scene;
    scene.disk.onList = [](const QString &folder) {
        if (folder.endsWith(QStringLiteral("d200")))
            throw std::bad_alloc();
    };
    QSignalSpy start(scene.form.get(), &DiskUsageForm::startPageShown);
    scene.form->scan(root);
    QVERIFY(start.wait());
    QVERIFY(scene.isFree());
    QVERIFY(scene.toolbarIsBack());
}

void DiskUsageCancelTest::backFreesEverything()
{
    Scene scene;
    QVERIFY(scene.scan(root));
    QSignalSpy start(scene.form.get(), &DiskUsageForm::startPageShown);
    QTest::mouseClick(scene.find<QToolButton>("backButton"), Qt::LeftButton);
    QVERIFY(scene.form->isClearingRam());
    const auto *notice = scene.find<QLabel>("clearRamLabel");
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), QStringLiteral("Clearing RAM back to the system in progress."));
    QCOMPARE(scene.find<QLabel>("pleaseWaitLabel")->text(), QStringLiteral("Please wait ..."));
    QCOMPARE(scene.toolbar.last(), false);
    QVERIFY(start.wait());
    QVERIFY(!notice->isVisible());
    QVERIFY(scene.isFree());
    QVERIFY(scene.toolbarIsBack());
}

QTEST_MAIN(DiskUsageCancelTest)
#include "tst_disk_usage_cancel.moc"
