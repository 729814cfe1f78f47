// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/BiggestFilesModel.h"
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageResultsForm.h"
#include "DiskUsage/DiskUsageStartForm.h"
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/Settings.h"
#include "tests/DiskUsage/Scene.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLCardButton.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSemaphore>
#include <QTabWidget>
#include <QToolButton>

#include <atomic>
#include <functional>
#include <memory>
#include <new>

using namespace Qt::StringLiterals;
using diskusage::loadRecentFolders;
using tests::FakeDialogs;
using tests::megabyte;
using tests::MemoryEnumerator;
using tests::Scene;
using tests::TestFolder;

namespace
{

const QString root = u"C:\\many"_s;

// A form over many folders, and what it tells the main window.
struct Many : Scene {
    Many()
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

class DiskUsageFormTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(u"Fusion"_s); }

    void aRealFolderIsMeasured();
    void foldersAreChosenAndRemembered();
    void unsavedOptionsAskBeforeTheFormIsLeft();
    void theTabKeyFollowsThePage();
    void everyControlHasAName();
    void aSleepingDriveBlocksNothing();
    void noticesAreSeenWhereTheyBelong();
    void aRestoredWindowKeepsTheFocus();
    void aCancelledScanLeavesNothing_data();
    void aCancelledScanLeavesNothing();
    void aCancelledFolderScanChangesNothing();
    void theFormMayGoDuringAScan();
    void takingTheModelsAwayEndsAnExport();
    void aStopThatComesTooLateIsNoCancel();
    void aScanThatFailsEndsOnTheStartPage();
    void theResultIsKeptUntilTheNextScan();
    void theDriveIsReadAgainAfterAFolderScan();
    void aShareThatDoesNotAnswerIsGivenUp();
};

void DiskUsageFormTest::aRealFolderIsMeasured()
{
    TestFolder folder;
    folder.makeLargeFile(u"big\\huge.iso"_s, quint64(5) << 30);
    folder.makeFile(u"x;y.txt"_s, QByteArray(300, 'x'));
    folder.makeFile(u"big\\deep\\\U0001F600.pdf"_s, QByteArray(2000, 'x'));
    folder.makeFolder(u"empty"_s);
    folder.makeLink(u"big\\deep\\up"_s, u"big"_s);
    Scene scene(new DiskUsageForm);
    QVERIFY(scene.scan(folder.path() + QLatin1Char('\\')));
    const FolderModel &model = scene.form->folderModel();
    const QModelIndex root = model.index(0, 0);
    const auto raw = [&model, &root](int section) {
        return model.data(root.siblingAtColumn(section), Qt::EditRole);
    };
    QCOMPARE(raw(FolderModel::Name).toString(), QFileInfo(folder.path()).fileName());
    QCOMPARE(raw(FolderModel::Path).toString(), folder.path());
    QCOMPARE(raw(FolderModel::Size).toULongLong(), (quint64(5) << 30) + 2300);
    QCOMPARE(raw(FolderModel::SizeText).toString(), u"5.00 GB"_s);
    QCOMPARE(raw(FolderModel::FileCount).toInt(), 3);
    QCOMPARE(raw(FolderModel::FolderCount).toInt(), 4); // big, deep, up, empty
    QVERIFY(raw(FolderModel::MaxData).toString().endsWith(u"x;y.txt:300:0;empty:0:1;"_s));
    QCOMPARE(loadRecentFolders(), QStringList({folder.path()}));
}

void DiskUsageFormTest::foldersAreChosenAndRemembered()
{
    FakeDialogs dialogs;
    Scene scene;
    QSignalSpy results(scene.form.get(), &DiskUsageForm::resultsShown);
    dialogs.nextFolder.enqueue(u"C:\\r\\a"_s);
    tests::click(*scene.form, "selectFolderButton");
    QVERIFY(results.wait());
    QCOMPARE(dialogs.fileDialogs.first().title, u"Select folder to scan"_s);
    QVERIFY(scene.goBack());
    QVERIFY(scene.scan(u"C:\\r\\c\\"_s));
    QCOMPARE(loadRecentFolders(), QStringList({u"C:\\r\\c"_s, u"C:\\r\\a"_s}));
    // Also when the form is made anew, and a click scans.
    Scene next(new DiskUsageForm(tests::lending(scene.disk), tests::noDrive));
    const auto cards = next.form->findChildren<FLCardButton *>(u"recentCard"_s);
    QCOMPARE(cards.size(), 2);
    QSignalSpy nextResults(next.form.get(), &DiskUsageForm::resultsShown);
    QTest::mouseClick(cards.at(1), Qt::LeftButton);
    QVERIFY(nextResults.wait());
    QCOMPARE(next.row({}).data().toString(), u"a"_s);
}

void DiskUsageFormTest::unsavedOptionsAskBeforeTheFormIsLeft()
{
    FakeDialogs dialogs;
    Scene scene;
    QVERIFY(scene.form->mayLeave());
    tests::click(*scene.form, "optionsButton");
    auto *oneDrive = scene.find<QCheckBox>("excludeOneDrivecheckBox");
    QVERIFY(scene.form->mayLeave()); // nothing was edited
    oneDrive->setChecked(true);
    dialogs.nextAnswer.enqueue(QMessageBox::Cancel);
    QVERIFY(!scene.form->mayLeave());
    QVERIFY(!diskusage::excludeOneDriveFolder.read());
    dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    QVERIFY(scene.form->mayLeave());
    QVERIFY(diskusage::excludeOneDriveFolder.read());
    QVERIFY(scene.form->mayLeave());
    QCOMPARE(dialogs.questions.size(), 2);
}

void DiskUsageFormTest::theTabKeyFollowsThePage()
{
    diskusage::saveRecentFolders({u"C:\\r"_s, u"C:\\s"_s});
    const auto ready = [](const QString &root) {
        platform::Drive drive = tests::noDrive(root);
        drive.ready = true;
        return drive;
    };
    MemoryEnumerator disk;
    Scene scene(new DiskUsageForm(tests::lending(disk), ready));
    QTRY_VERIFY(scene.find<FLCardButton>("driveCardC")->text().contains(u"(C:)"_s));
    auto *first = scene.find<QPushButton>("selectFolderButton");
    first->setFocus();
    QStringList visited;
    int lastTop = 0;
    for (int i = 0; i < 30; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        const QWidget *now = QApplication::focusWidget();
        if (now == first)
            break;
        visited.append(now->objectName());
        const int top = now->mapTo(scene.form.get(), QPoint(0, now->height())).y();
        QVERIFY2(top >= lastTop, qPrintable(visited.join(QLatin1Char(' '))));
        lastTop = top;
    }
    QVERIFY(visited.contains(u"driveCardC"_s));
    QCOMPARE(visited.count(u"recentCard"_s), 2);
}

void DiskUsageFormTest::everyControlHasAName()
{
    Scene scene;
    QVERIFY(scene.scan(u"C:\\r"_s));
    for (const QWidget *widget : scene.form->findChildren<QWidget *>()) {
        // What is hidden itself gets its text when it is shown.
        if (widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() || widget->isHidden() ||
            widget->objectName().startsWith(u"qt_"_s))
            continue;
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        const bool named = !widget->accessibleName().isEmpty() || (button && !button->text().isEmpty());
        const bool container = qobject_cast<const QTabWidget *>(widget) || widget->inherits("QTabBar") ||
                               widget->inherits("ClickableLabel") || widget->inherits("QScrollBar") ||
                               widget->inherits("QHeaderView") || widget->inherits("QComboBoxListView") ||
                               widget->inherits("QComboBoxPrivateContainer");
        QVERIFY2(named || container, qPrintable(QLatin1String(widget->metaObject()->className()) +
                                                QLatin1Char(' ') + widget->objectName()));
    }
}

void DiskUsageFormTest::aSleepingDriveBlocksNothing()
{
    MemoryEnumerator disk;
    fill(disk);
    const auto awake = std::make_shared<QSemaphore>();
    const auto slowDrive = [awake](const QString &root) {
        awake->acquire();
        return tests::noDrive(root);
    };
    {
        Scene scene(new DiskUsageForm(tests::lending(disk), slowDrive));
        QVERIFY(QTest::qWaitForWindowExposed(scene.form.get()));
        QTRY_COMPARE(scene.find<FLCardButton>("driveCardC")->caption(), u"Reading ..."_s);
        QVERIFY(scene.scan(u"C:\\r"_s));
    }
    awake->release(1000); // every drive
}

void DiskUsageFormTest::noticesAreSeenWhereTheyBelong()
{
    Scene scene;
    auto *start = scene.form->findChild<DiskUsageStartForm *>();
    const auto *old = start->findChild<NoticeBar *>();
    start->notice()->showNotice(NoticeBar::Kind::Warning, u"The scan ran out of memory."_s);
    QVERIFY(old->isVisible());
    // What is said of a drop comes after the folder; the scan has begun then.
    QSignalSpy results(scene.form.get(), &DiskUsageForm::resultsShown);
    emit start->folderDropped(u"C:\\r\\a"_s);
    emit start->othersLeftOut(u"Only a"_s);
    QVERIFY(results.wait());
    QVERIFY(scene.find<NoticeBar>("noticeBar")->isVisible());
    QCOMPARE(scene.notice(), u"Only a"_s);
    QVERIFY(scene.goBack());
    QVERIFY(!old->text().contains(u"memory"_s));
    QVERIFY(scene.scan(u"C:\\r\\c"_s)); // it was about that one result
    QVERIFY(!scene.find<NoticeBar>("noticeBar")->isVisible());
}

void DiskUsageFormTest::aRestoredWindowKeepsTheFocus()
{
    Scene scene;
    auto *options = scene.find<QToolButton>("optionsButton");
    options->setFocus();
    scene.form->showMinimized();
    QTRY_VERIFY(scene.form->isMinimized());
    scene.form->showNormal();
    QVERIFY(QTest::qWaitForWindowExposed(scene.form.get()));
    // Of the form, since window managers do not make every restored window the active one.
    QCOMPARE(scene.form->focusWidget(), static_cast<QWidget *>(options));
}

void DiskUsageFormTest::aCancelledScanLeavesNothing_data()
{
    using Cancel = std::function<void(Many &)>;
    QTest::addColumn<Cancel>("cancel");
    QTest::newRow("at the start") << Cancel([](Many &scene) { scene.form->handleScanCancel(); });
    QTest::newRow("in the middle") << Cancel([](Many &scene) {
        QTRY_VERIFY(scene.find<QLabel>("itemsLabel")->text().toInt() > 0);
        tests::click(*scene.form, "cancelButton");
    });
    QTest::newRow("at the end") << Cancel([](Many &scene) {
        scene.disk.onList = {};
        QThread::sleep(1); // the worker ends; this thread has not heard of it
        scene.form->handleScanCancel();
    });
    QTest::newRow("by the main window") << Cancel([](Many &scene) { scene.form->requestStop(); });
}

void DiskUsageFormTest::aCancelledScanLeavesNothing()
{
    QFETCH(const std::function<void(Many &)>, cancel);
    Many scene;
    if (QLatin1StringView(QTest::currentDataTag()) != "at the end"_L1)
        scene.slowDown();
    scene.form->scan(root);
    QVERIFY(scene.form->isScanning() && !scene.form->busyText().isEmpty());
    QCOMPARE(scene.find<QLabel>("scanTitleLabel")->text(), u"Scanning in progress. Please wait ..."_s);
    QVERIFY(scene.endsOnTheStartPageAfter([&] { cancel(scene); }));
    QVERIFY(!scene.disk.onList || scene.disk.listCount() < 400);
    // And the next scan is as good as the first.
    scene.disk.onList = {};
    QVERIFY(scene.scan(root));
    QCOMPARE(scene.form->folderModel().rowCount(scene.form->folderModel().index(0, 0)), 400);
}

void DiskUsageFormTest::aCancelledFolderScanChangesNothing()
{
    Many scene;
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
void DiskUsageFormTest::theFormMayGoDuringAScan()
{
    for (const unsigned long milliseconds : {0UL, 50UL, 1500UL}) {
        Many scene;
        if (milliseconds < 1000)
            scene.slowDown();
        scene.form->scan(root);
        QThread::msleep(milliseconds);
        scene.form.reset();
        QVERIFY(milliseconds > 1000 || scene.disk.listCount() < 400);
        QTest::qWait(50); // what was on its way to the form goes nowhere
    }
}

void DiskUsageFormTest::takingTheModelsAwayEndsAnExport()
{
    const tests::TestFolder folder;
    const QString file = folder.path(u"folders.csv"_s);
    tests::FakeDialogs dialogs;
    Many scene;
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
}

void DiskUsageFormTest::aStopThatComesTooLateIsNoCancel()
{
    const tests::TestFolder folder;
    const QString file = folder.path(u"folders.csv"_s);
    tests::FakeDialogs dialogs;
    Many scene;
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

void DiskUsageFormTest::aScanThatFailsEndsOnTheStartPage()
{
    Many scene;
    scene.disk.onList = [](const QString &folder) {
        if (folder.endsWith(u"d200"_s))
            throw std::bad_alloc();
    };
    QVERIFY(scene.endsOnTheStartPageAfter([&scene] { scene.form->scan(root); }));
}

void DiskUsageFormTest::theResultIsKeptUntilTheNextScan()
{
    QSemaphore gate;
    Many scene;
    auto *start = scene.form->findChild<DiskUsageStartForm *>();
    QVERIFY(scene.scan(root));
    QVERIFY(scene.goBack());
    QVERIFY(!scene.form->isBusy());
    tests::click(*start, "noticeActionButton");
    QCOMPARE(QApplication::focusWidget(), scene.tree());
    QCOMPARE(scene.tree()->model()->rowCount(scene.row({})), 400);
    QVERIFY(scene.goBack());

    const auto *notice = scene.find<QLabel>("clearRamLabel");
    scene.disk.onList = [&gate](const QString &) {
        gate.acquire();
        gate.release();
    };
    QVERIFY(scene.endsOnTheStartPageAfter([&] {
        const auto open = qScopeGuard([&gate] { gate.release(); });
        scene.form->scan(root);
        QVERIFY(scene.form->isClearingRam());
        QVERIFY(notice->isVisible());
        QCOMPARE(notice->text(), u"Clearing RAM back to the system in progress."_s);
        QTRY_VERIFY(scene.form->isScanning());
        scene.form->handleScanCancel();
    }));
    QVERIFY(start->notice()->isHidden()); // there is nothing to return to
}

void DiskUsageFormTest::theDriveIsReadAgainAfterAFolderScan()
{
    MemoryEnumerator disk;
    disk.addFile(u"C:\\a\\x"_s, megabyte);
    const auto used = std::make_shared<std::atomic<quint64>>(3);
    const auto drives = [used](const QString &name) {
        platform::Drive drive = tests::noDrive(name);
        drive.ready = true;
        drive.totalBytes = 100ULL << 30;
        drive.freeBytes = (100 - *used) << 30;
        return drive;
    };
    Scene scene(new DiskUsageForm(tests::lending(disk), drives));
    QVERIFY(scene.scan(u"C:\\"_s));
    const auto *totals = scene.find<ElidedLabel>("resultTotalsLabel");
    QTRY_VERIFY(totals->text().contains(u"3.00 GB used"_s));
    *used = 2;
    scene.select({u"a"_s});
    QTest::keyClick(scene.tree(), Qt::Key_F5);
    QTRY_VERIFY(totals->text().contains(u"2.00 GB used"_s));
}

void DiskUsageFormTest::aShareThatDoesNotAnswerIsGivenUp()
{
    tests::MemoryEnumerator disk;
    tests::fill(disk);
    bool dead = false;
    const auto enumerators = [&]() -> std::unique_ptr<core::DirectoryEnumerator> {
        if (dead)
            return std::make_unique<DeadShare>();
        return std::make_unique<tests::BorrowedEnumerator>(disk);
    };
    Scene scene(new DiskUsageForm(enumerators, tests::noDrive));
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
    QTRY_VERIFY(scene.form->isScanning()); // the former result is freed first
    QTest::qWait(50);
    scene.form->requestStop();
    QVERIFY(start.wait());
    // The window may go as well.
    scene.form->scan(u"C:\\r"_s);
    scene.form.reset();
}

QTEST_MAIN(DiskUsageFormTest)
#include "tst_disk_usage_form.moc"
