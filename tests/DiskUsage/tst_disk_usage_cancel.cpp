// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/BiggestFilesModel.h"
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageForm.h"
#include "DiskUsage/DiskUsageResultsForm.h"
#include "DiskUsage/FolderModel.h"
#include "tests/DiskUsage/Scene.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"

#include <QFile>
#include <QLabel>
#include <QSemaphore>
#include <QToolButton>

#include <functional>
#include <new>

using namespace Qt::StringLiterals;

namespace
{

const QString root = u"C:\\many"_s;

// A form over many folders, and what it tells the main window.
struct Scene : tests::Scene {
    Scene()
    {
        for (int folder = 0; folder < 400; ++folder)
            for (int file = 0; file < 20; ++file)
                disk.addFile(root + u"\\d%1\\f%2.txt"_s.arg(folder).arg(file), 1000);
        QObject::connect(form.get(), &FLWidget::showToolbarSignal, form.get(),
                         [this](bool show) { toolbar.append(show); });
    }

    // Slower than anybody waits for.
    void slowDown()
    {
        disk.onList = [](const QString &) { QThread::msleep(200); };
    }
    // Whether this leads to the start page, with nothing left of the scan.
    bool endsOnTheStartPageAfter(const std::function<void()> &cancel) const
    {
        QSignalSpy start(form.get(), &DiskUsageForm::startPageShown);
        QSignalSpy results(form.get(), &DiskUsageForm::resultsShown);
        cancel();
        return (start.count() > 0 || start.wait(30'000)) && results.isEmpty() && isFree() && toolbarIsBack();
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

// Nobody answers, until the call is given up.
class DeadShare : public core::DirectoryEnumerator
{
public:
    void list(const QString &, core::DirectoryListing &out, const core::CancelFlag &) override
    {
        out.clear();
        m_given.acquire();
    }
    std::optional<core::FileIdentity> identity(const QString &) override { return std::nullopt; }
    void interrupt() override { m_given.release(); }

private:
    QSemaphore m_given;
};

} // namespace

class DiskUsageCancelTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void atTheStart();
    void inTheMiddle();
    void atTheEnd();
    void byTheMainWindow();
    void ofAFolderScan();
    void theFormMayGoDuringAScan();
    void theFormMayGoDuringAnExport();
    void aStopThatComesTooLateIsNoCancel();
    void aScanThatFailsEndsOnTheStartPage();
    void backFreesEverything();
    void aShareThatDoesNotAnswerIsGivenUp();
};

void DiskUsageCancelTest::atTheStart()
{
    Scene scene;
    scene.form->scan(root);
    QVERIFY(scene.form->isBusy());
    QVERIFY(scene.form->isScanning());
    QCOMPARE(scene.toolbar, QList<bool>({false}));
    QVERIFY(scene.endsOnTheStartPageAfter([&scene] { scene.form->handleScanCancel(); }));
    // And the next scan is as good as the first.
    QVERIFY(scene.scan(root));
    QCOMPARE(scene.form->folderModel().rowCount(scene.form->folderModel().index(0, 0)), 400);
}

void DiskUsageCancelTest::inTheMiddle()
{
    Scene scene;
    scene.slowDown();
    scene.form->scan(root);
    QTRY_VERIFY(scene.find<QLabel>("itemsLabel")->text().toInt() > 0);
    QCOMPARE(scene.find<QLabel>("scanTitleLabel")->text(), u"Scanning in progress. Please wait ..."_s);
    QVERIFY(scene.endsOnTheStartPageAfter([&scene] { tests::click(*scene.form, "cancelButton"); }));
    QVERIFY(scene.disk.listCount() < 400);
}

void DiskUsageCancelTest::atTheEnd()
{
    Scene scene;
    scene.form->scan(root);
    QThread::sleep(1); // the worker ends; this thread has not heard of it
    QVERIFY(scene.endsOnTheStartPageAfter([&scene] { scene.form->handleScanCancel(); }));
}

void DiskUsageCancelTest::byTheMainWindow()
{
    Scene scene;
    scene.slowDown();
    scene.form->scan(root);
    QVERIFY(!scene.form->busyText().isEmpty());
    QVERIFY(scene.endsOnTheStartPageAfter([&scene] { scene.form->requestStop(); }));
    QVERIFY(scene.disk.listCount() < 400);
    QVERIFY(scene.form->busyText().isEmpty());
    scene.form->requestStop(); // with nothing to stop
}

void DiskUsageCancelTest::ofAFolderScan()
{
    Scene scene;
    QVERIFY(scene.scan(root));
    scene.slowDown();
    const FolderModel &model = scene.form->folderModel();
    const QString before = model.index(0, FolderModel::MaxData).data().toString();
    QTreeView *tree = scene.tree();
    tree->setCurrentIndex(tree->model()->index(3, 0, tree->model()->index(0, 0)));
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_F5);
    QVERIFY(scene.form->isBusy());
    QCOMPARE(scene.toolbar.last(), false);
    QVERIFY(!scene.find<QToolButton>("backButton")->isEnabled());
    tests::click(*scene.form, "busyCancelButton");
    QTRY_VERIFY(!scene.form->isBusy());
    QVERIFY(scene.toolbarIsBack());
    QCOMPARE(model.index(0, FolderModel::MaxData).data().toString(), before);
    QVERIFY(scene.find<QToolButton>("backButton")->isEnabled());
}

// At once, in the middle, and when the worker has ended.
void DiskUsageCancelTest::theFormMayGoDuringAScan()
{
    for (const unsigned long milliseconds : {0UL, 50UL, 1500UL}) {
        Scene scene;
        if (milliseconds < 1000)
            scene.slowDown();
        scene.form->scan(root);
        QThread::msleep(milliseconds);
        scene.form.reset();
        QVERIFY(milliseconds > 1000 || scene.disk.listCount() < 400);
        QTest::qWait(50); // what was on its way to the form goes nowhere
    }
}

void DiskUsageCancelTest::theFormMayGoDuringAnExport()
{
    const tests::TestFolder folder;
    const QString file = folder.path(u"folders.csv"_s);
    tests::FakeDialogs dialogs;
    Scene scene;
    for (int i = 0; i < 50'000; ++i)
        scene.disk.addFolder(root + u"\\d1\\e%1"_s.arg(i));
    QVERIFY(scene.scan(root));
    dialogs.nextFileToSave.enqueue(file);
    tests::click(*scene.form, "exportButton");
    auto *page = scene.form->findChild<DiskUsageResultsForm *>();
    QVERIFY(page->isExporting());
    page->detach(); // whoever takes the models away ends what reads them
    QVERIFY(!page->isExporting());
    QVERIFY(!QFile::exists(file));

    Scene next;
    QVERIFY(next.scan(root));
    dialogs.nextFileToSave.enqueue(file);
    tests::click(*next.form, "exportButton");
    QVERIFY(next.form->isBusy());
    next.form.reset();
    QTest::qWait(50);
}

void DiskUsageCancelTest::aStopThatComesTooLateIsNoCancel()
{
    const tests::TestFolder folder;
    const QString file = folder.path(u"folders.csv"_s);
    tests::FakeDialogs dialogs;
    Scene scene;
    QVERIFY(scene.scan(root));
    dialogs.nextFileToSave.enqueue(file);
    tests::click(*scene.form, "exportButton");
    for (int i = 0; i < 100 && !QFile::exists(file); ++i)
        QThread::msleep(50); // the worker ends; this thread has not heard of it
    QThread::msleep(100);
    scene.form->requestStop();
    QTRY_VERIFY(!scene.form->isBusy());
    QVERIFY(QFile::exists(file));
    QVERIFY(scene.notice().contains(u"401 rows"_s));
}

void DiskUsageCancelTest::aScanThatFailsEndsOnTheStartPage()
{
    Scene scene;
    scene.disk.onList = [](const QString &folder) {
        if (folder.endsWith(u"d200"_s))
            throw std::bad_alloc();
    };
    QVERIFY(scene.endsOnTheStartPageAfter([&scene] { scene.form->scan(root); }));
}

void DiskUsageCancelTest::backFreesEverything()
{
    Scene scene;
    QVERIFY(scene.scan(root));
    const auto *notice = scene.find<QLabel>("clearRamLabel");
    QVERIFY(scene.endsOnTheStartPageAfter([&] {
        tests::click(*scene.form, "backButton");
        QVERIFY(scene.form->isClearingRam());
        QVERIFY(notice->isVisible());
        QCOMPARE(notice->text(), u"Clearing RAM back to the system in progress."_s);
        QCOMPARE(scene.find<QLabel>("pleaseWaitLabel")->text(), u"Please wait ..."_s);
        QCOMPARE(scene.toolbar.last(), false);
    }));
    QVERIFY(!notice->isVisible());
}

void DiskUsageCancelTest::aShareThatDoesNotAnswerIsGivenUp()
{
    tests::MemoryEnumerator disk;
    tests::fill(disk);
    bool dead = false;
    const auto enumerators = [&]() -> std::unique_ptr<core::DirectoryEnumerator> {
        if (dead)
            return std::make_unique<DeadShare>();
        return std::make_unique<tests::BorrowedEnumerator>(disk);
    };
    tests::Scene scene(new DiskUsageForm(enumerators, tests::noDrive));
    QVERIFY(scene.scan(u"C:\\r"_s));
    dead = true;
    scene.select({u"a"_s});
    QTest::keyClick(scene.tree(), Qt::Key_F5);
    QTest::qWait(50);
    QVERIFY(scene.form->isScanning());
    scene.form->requestStop();
    QTRY_VERIFY(!scene.form->isScanning());

    QVERIFY(scene.goBack());
    QSignalSpy start(scene.form.get(), &DiskUsageForm::startPageShown);
    scene.form->scan(u"C:\\r"_s);
    QTest::qWait(50);
    QVERIFY(scene.form->isScanning());
    scene.form->requestStop();
    QVERIFY(start.wait());
    // The window may go as well.
    scene.form->scan(u"C:\\r"_s);
    scene.form.reset();
}

QTEST_MAIN(DiskUsageCancelTest)
#include "tst_disk_usage_cancel.moc"
