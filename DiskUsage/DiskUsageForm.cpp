// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageForm.h"

#include "DiskUsage/BiggestFilesModel.h"
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageClearRamForm.h"
#include "DiskUsage/DiskUsageClearRamThread.h"
#include "DiskUsage/DiskUsageFolderScanThread.h"
#include "DiskUsage/DiskUsageOptionsForm.h"
#include "DiskUsage/DiskUsageResultsForm.h"
#include "DiskUsage/DiskUsageScanProgressForm.h"
#include "DiskUsage/DiskUsageStartForm.h"
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/Settings.h"
#include "platform/Processors.h"
#include "platform/Win32Enumerator.h"
#include "widgets/NoticeBar.h"

#include <QThreadPool>

using namespace diskusage;

namespace
{

std::unique_ptr<core::DirectoryEnumerator> windowsEnumerator()
{
    return std::make_unique<platform::Win32Enumerator>();
}

// Destroying the data of a hundred thousand folders takes too long for the interface thread.
struct Rest {
    std::unique_ptr<FolderItem> rows;
    std::vector<std::shared_ptr<ScanResult>> results;
    DataFilesModel::Contents files;
    std::vector<FileTypeResult> types;

    ~Rest() { FolderModel::destroyTree(std::move(rows)); } // before the data that they refer to
};

void destroyInBackground(std::shared_ptr<Rest> rest)
{
    QThreadPool::globalInstance()->start([rest = std::move(rest)]() mutable { rest.reset(); });
}

} // namespace

DiskUsageForm::DiskUsageForm(QWidget *parent) : DiskUsageForm(windowsEnumerator, platform::readDrive, parent)
{
}

DiskUsageForm::DiskUsageForm(EnumeratorFactory enumerators, platform::DriveLister::Reader drives,
                             QWidget *parent)
    : ScanForm(new DiskUsageScanProgressForm, parent),
      m_enumerators(std::move(enumerators)),
      m_folders(std::make_unique<FolderModel>()),
      m_biggestFiles(std::make_unique<BiggestFilesModel>()),
      m_dataFiles(std::make_unique<DataFilesModel>()),
      m_start(new DiskUsageStartForm(std::move(drives), this)),
      m_results(new DiskUsageResultsForm(this)),
      m_clearing(new DiskUsageClearRamForm(this)),
      m_options(new DiskUsageOptionsForm(this))
{
    buildPages();
    connectPages();
}

DiskUsageForm::~DiskUsageForm()
{
    m_jobs.drop(); // its job uses the models
    m_results->detach();
}

void DiskUsageForm::buildPages()
{
    for (QWidget *page : std::initializer_list<QWidget *>{m_start, m_results, m_clearing, m_options})
        m_pages->addWidget(page);
    m_pages->setCurrentWidget(m_start);
    m_start->showRecentFolders(loadRecentFolders());
}

void DiskUsageForm::connectPages()
{
    connect(m_start, &DiskUsageStartForm::folderChosen, this, &DiskUsageForm::scan);
    connect(m_start, &DropFrame::othersLeftOut, this,
            [this](const QString &notice) { m_resultNotice = notice; });
    connect(m_start, &DiskUsageStartForm::driveRead, m_results, &DiskUsageResultsForm::showDrive);
    connect(m_start, &DiskUsageStartForm::optionsRequested, this, &DiskUsageForm::showOptions);
    connect(m_start, &StartPage::recentCleared, this, [this] {
        saveRecentFolders({});
        m_start->showRecentFolders({});
    });
    connect(m_results, &DiskUsageResultsForm::back, this, [this] {
        if (!isBusy())
            leaveResult(m_start, m_results);
    });
    connect(m_results, &DiskUsageResultsForm::scanAllAgain, this, &DiskUsageForm::scanAllAgain);
    connect(m_results, &DiskUsageResultsForm::scanFolderAgain, this, &DiskUsageForm::scanFolderAgain);
    connect(m_results, &DiskUsageResultsForm::stopFolderScan, this, &DiskUsageForm::handleScanCancel);
    connect(m_options, &DiskUsageOptionsForm::closed, this, [this] { showStartPage(); });
}

bool DiskUsageForm::mayLeave()
{
    return m_pages->currentWidget() != m_options || !m_options->hasUnsavedChanges() || m_options->tryClose();
}

void DiskUsageForm::scan(const QString &folder)
{
    if (isBusy() || folder.isEmpty())
        return;
    const QString root = shownRoot(folder);
    const QStringList recent = withRecentFolder(loadRecentFolders(), root);
    saveRecentFolders(recent);
    m_start->showRecentFolders(recent);
    m_nextRoot = root;
    if (m_folders->rootFolder())
        startClearing();
    else
        startScanOf(std::exchange(m_nextRoot, {}));
}

ScanJob DiskUsageForm::makeJob(const QString &root) const
{
    ScanJob job;
    job.root = root;
    ScanSettings settings = loadScanSettings();
    job.options.fileTypes = std::move(settings.fileTypes);
    job.options.excludedFolders = std::move(settings.excludedFolders);
    job.options.excludeOneDrive = settings.excludeOneDrive;
    job.options.oneDriveFolder = oneDriveFolder();
    job.options.readAheadThreads = platform::osIdleCores();
    job.enumerator = m_enumerators();
    return job;
}

void DiskUsageForm::startScanOf(const QString &root)
{
    m_root = root;
    m_start->notice()->hide(); // it refers to an earlier scan
    m_resultNotice.clear();
    ScanJob job = makeJob(root);
    m_scanFileTypes = job.options.fileTypes;
    m_scan = new DiskUsageWorkerThread(std::move(job), *m_folders, *m_biggestFiles, *m_dataFiles);
    startScan(tr("Scanning in progress. Please wait ..."), tr("Stopping the scan ..."),
              tr("the scan of a folder"), m_scan, [this](const auto &) { handleResults(); });
}

void DiskUsageForm::handleResults()
{
    const DiskUsageWorkerThread *scan = std::exchange(m_scan, nullptr);
    if (!scan)
        return;
    if (!scan->result())
        showStartPage(failureText(scan->error()));
    else if (scan->stopRequested()) // stopped after the models were filled
        startClearing();
    else
        showResults(scan->result());
}

void DiskUsageForm::showResults(std::shared_ptr<ScanResult> result)
{
    ScanView view;
    view.root = m_root;
    view.folders = m_folders.get();
    view.biggestFiles = m_biggestFiles.get();
    view.dataFiles = m_dataFiles.get();
    view.result = std::move(result);
    view.fileTypes = m_scanFileTypes;
    view.milliseconds = m_progress->elapsed();
    view.drive = m_start->drive(m_root);
    m_results->showScan(view);
    m_start->refreshDrives(); // current drive figures; driveRead() follows
    if (!m_resultNotice.isEmpty())
        m_results->showNotice(std::exchange(m_resultNotice, {}));
    m_pages->setCurrentWidget(m_results);
    m_results->setFocus();
    emit resultsShown();
}

void DiskUsageForm::scanFolderAgain(const QModelIndex &folder)
{
    if (isBusy() || !folder.isValid())
        return;
    if (!folder.parent().isValid()) {
        scanAllAgain();
        return;
    }
    const FolderItem *item = m_folders->folderItem(folder);
    if (item->folder().cycle) {
        // Scanned as a root, a link would be followed and its target counted twice.
        m_results->showNotice(
            tr("%1 is a link to a folder above it, where it is counted.").arg(item->path()));
        return;
    }
    m_folderIndex = folder;
    ScanJob job = makeJob(item->path());
    for (const FolderItem *above = item->parentFolder(); above; above = above->parentFolder())
        job.options.ancestors.append(above->path());
    job.options.fileTypes = m_scanFileTypes; // consistent with the rest of the result
    m_folderScan = new DiskUsageFolderScanThread(std::move(job), m_dataFiles->result());
    connect(m_folderScan, &DiskUsageFolderScanThread::updateFolderItemScan, &m_jobs.relay(),
            &core::ProgressRelay::setItems, Qt::DirectConnection);
    JobOptions options{.busyText = tr("the scan of a folder")};
    options.progress = [this, path = item->path()](const core::ScanProgress &progress) {
        m_results->setBusy(true,
                           tr("Scanning %1 again, %2 items ...").arg(path, QString::number(progress.items)));
    };
    m_results->setBusy(true, tr("Scanning %1 again ...").arg(item->path()));
    m_jobs.start(std::move(options), m_folderScan,
                 [this](DiskUsageFolderScanThread &scan) { handleFolderResults(scan); });
}

void DiskUsageForm::handleFolderResults(DiskUsageFolderScanThread &scan)
{
    m_folderScan = nullptr;
    m_results->setBusy(false);
    std::shared_ptr<ScanResult> result = scan.takeResult();
    if (result && m_folderIndex.isValid()) {
        const Folder before = m_folders->folderItem(m_folderIndex)->folder();
        auto rest = std::make_shared<Rest>();
        rest->rows = m_folders->replaceFolder(m_folderIndex, result, scan.takeTree());
        rest->results = m_folders->takeUnused();
        if (DataFilesModel::Contents files = scan.takeContents(); files.result) {
            rest->files = m_dataFiles->replace(std::move(files));
            rest->types = m_folders->takeFiles();
        }
        destroyInBackground(std::move(rest));
        m_results->folderReplaced(scan.folder(), before, *result);
        m_start->refreshDrives(); // driveRead() follows
    } else if (!scan.error().isEmpty()) {
        m_results->showNotice(failureText(scan.error()), NoticeBar::Kind::Error);
    }
}

void DiskUsageForm::scanAllAgain()
{
    if (isBusy())
        return;
    m_nextRoot = m_root;
    startClearing();
}

void DiskUsageForm::startClearing()
{
    if (isBusy())
        return;
    m_results->detach();
    auto *clear = new DiskUsageClearRamThread(*m_folders, *m_biggestFiles, *m_dataFiles);
    connect(clear, &DiskUsageClearRamThread::clearRAMStep, m_clearing, &DiskUsageClearRamForm::addStep);
    m_clearing->begin(DiskUsageClearRamThread::steps);
    m_pages->setCurrentWidget(m_clearing);
    m_isClearing = true;
    m_jobs.start({.busyText = tr("the freeing of memory")}, clear,
                 [this](const auto &) { onClearRamFinish(); });
}

void DiskUsageForm::onClearRamFinish()
{
    if (!std::exchange(m_isClearing, false))
        return;
    if (m_nextRoot.isEmpty())
        showStartPage();
    else
        startScanOf(std::exchange(m_nextRoot, {}));
}

void DiskUsageForm::showStartPage(const QString &notice)
{
    if (!notice.isEmpty())
        m_start->notice()->showNotice(NoticeBar::Kind::Warning, notice);
    m_pages->setCurrentWidget(m_start);
    emit startPageShown();
}

void DiskUsageForm::showOptions()
{
    m_options->load();
    m_pages->setCurrentWidget(m_options);
}
