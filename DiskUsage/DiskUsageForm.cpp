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
#include "core/FolderWalk.h"
#include "platform/Processors.h"
#include "platform/Win32Enumerator.h"

#include <QStackedLayout>
#include <QThreadPool>

using namespace diskusage;

namespace
{

std::unique_ptr<core::DirectoryEnumerator> windowsEnumerator()
{
    return std::make_unique<platform::Win32Enumerator>();
}

// The form in which a folder is shown and stored: "C:\\", "C:\\x".
QString shownRoot(const QString &chosen)
{
    const QString root = core::walkRoot(chosen);
    return root.endsWith(QLatin1Char(':')) ? root + QLatin1Char('\\') : root;
}

// Destroying many rows takes longer than the interface may wait.
void destroyInBackground(std::unique_ptr<FolderItem> rows)
{
    if (FolderItem *tree = rows.release())
        QThreadPool::globalInstance()->start(
            [tree] { FolderModel::destroyTree(std::unique_ptr<FolderItem>(tree)); });
}

} // namespace

DiskUsageForm::DiskUsageForm(QWidget *parent) : DiskUsageForm(windowsEnumerator, platform::readDrive, parent)
{
}

DiskUsageForm::DiskUsageForm(EnumeratorFactory enumerators, platform::DriveLister::Reader drives,
                             QWidget *parent)
    : FLWidget(parent),
      m_enumerators(std::move(enumerators)),
      m_folders(std::make_unique<FolderModel>()),
      m_biggestFiles(std::make_unique<BiggestFilesModel>()),
      m_dataFiles(std::make_unique<DataFilesModel>()),
      m_pages(new QStackedLayout(this)),
      m_start(new DiskUsageStartForm(std::move(drives), this)),
      m_progress(new DiskUsageScanProgressForm(this)),
      m_results(new DiskUsageResultsForm(this)),
      m_clearing(new DiskUsageClearRamForm(this)),
      m_options(new DiskUsageOptionsForm(this))
{
    buildPages();
    connectPages();
}

DiskUsageForm::~DiskUsageForm()
{
    m_scan.reset();
    m_folderScan.reset();
    m_clear.reset();
    m_results->detach();
}

void DiskUsageForm::buildPages()
{
    for (QWidget *page : {static_cast<QWidget *>(m_start), static_cast<QWidget *>(m_progress),
                          static_cast<QWidget *>(m_results), static_cast<QWidget *>(m_clearing),
                          static_cast<QWidget *>(m_options)})
        m_pages->addWidget(page);
    m_start->showRecentFolders(loadRecentFolders());
}

void DiskUsageForm::connectPages()
{
    connect(m_start, &DiskUsageStartForm::folderChosen, this, &DiskUsageForm::scan);
    connect(m_start, &DropFrame::othersLeftOut, this,
            [this](const QString &notice) { m_resultNotice = notice; });
    connect(m_start, &DiskUsageStartForm::optionsRequested, this, &DiskUsageForm::showOptions);
    connect(m_start, &DiskUsageStartForm::recentFoldersCleared, this, [this] {
        saveRecentFolders({});
        m_start->showRecentFolders({});
    });
    connect(m_progress, &DiskUsageScanProgressForm::scanCancel, this, &DiskUsageForm::handleScanCancel);
    connect(m_results, &DiskUsageResultsForm::back, this, &DiskUsageForm::startClearing);
    connect(m_results, &DiskUsageResultsForm::scanAllAgain, this, &DiskUsageForm::scanAllAgain);
    connect(m_results, &DiskUsageResultsForm::scanFolderAgain, this, &DiskUsageForm::scanFolderAgain);
    connect(m_results, &DiskUsageResultsForm::exportingChanged, this,
            [this](bool running) { emit showToolbarSignal(!running); });
    connect(m_results, &DiskUsageResultsForm::stopFolderScan, this, &DiskUsageForm::requestStop);
    connect(m_options, &DiskUsageOptionsForm::closed, this, [this] { showStartPage(); });
    connect(&m_relay, &core::ProgressRelay::changed, this, &DiskUsageForm::showProgress);
    connect(&m_folderRelay, &core::ProgressRelay::changed, this, [this](const core::ScanProgress &progress) {
        if (m_folderScan)
            m_results->setBusy(true, tr("Scanning %1 again, %2 items ...")
                                         .arg(m_folderScan->folder(), QString::number(progress.items)));
    });
}

bool DiskUsageForm::isScanning() const
{
    return m_scan || m_folderScan;
}

bool DiskUsageForm::isBusy() const
{
    return isScanning() || isClearingRam() || m_results->isExporting();
}

void DiskUsageForm::requestStop()
{
    if (m_scan)
        handleScanCancel();
    if (m_folderScan)
        m_folderScan->requestStop();
    m_results->requestStop();
}

bool DiskUsageForm::mayLeave()
{
    return m_pages->currentWidget() != m_options || !m_options->hasUnsavedChanges() || m_options->tryClose();
}

QString DiskUsageForm::busyText() const
{
    if (isClearingRam())
        return tr("the freeing of memory");
    if (m_results->isExporting())
        return tr("the export of a table");
    return isScanning() ? tr("the scan of a folder") : QString();
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
        startScan(std::exchange(m_nextRoot, {}));
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

void DiskUsageForm::startScan(const QString &root)
{
    m_root = root;
    m_start->hideNotice(); // it was about an earlier scan
    m_resultNotice.clear();
    ScanJob job = makeJob(root);
    m_scanFileTypes = job.options.fileTypes;
    m_scan.reset(new DiskUsageWorkerThread(std::move(job), *m_folders, *m_biggestFiles, *m_dataFiles));
    DiskUsageWorkerThread *thread = m_scan.get();
    // These come by the hundred thousand; the relay passes on what a person can follow.
    connect(thread, &DiskUsageWorkerThread::updatePath, &m_relay, &core::ProgressRelay::setPath,
            Qt::DirectConnection);
    connect(thread, &DiskUsageWorkerThread::updateTotalSubFolder, &m_relay,
            &core::ProgressRelay::setTotalSteps, Qt::DirectConnection);
    connect(thread, &DiskUsageWorkerThread::updateScanProgress, &m_relay, &core::ProgressRelay::addStep,
            Qt::DirectConnection);
    connect(thread, &DiskUsageWorkerThread::updateTotalItemScan, &m_relay, &core::ProgressRelay::setItems,
            Qt::DirectConnection);
    connect(thread, &DiskUsageWorkerThread::resultReady, this, &DiskUsageForm::handleResults);
    m_stepsShown = 0;
    m_totalShown = false;
    m_relay.restart();
    m_pages->setCurrentWidget(m_progress);
    m_progress->begin(root);
    emit showToolbarSignal(false);
    thread->start();
}

void DiskUsageForm::showProgress(const core::ScanProgress &progress)
{
    if (!m_scan)
        return;
    if (!progress.path.isEmpty())
        handleUpdatePath(progress.path);
    if (progress.totalSteps > 0 && !std::exchange(m_totalShown, true))
        handleUpdateTotalSubFolder(progress.totalSteps);
    for (; m_stepsShown < progress.steps; ++m_stepsShown)
        handleUpdateScanProgress();
    handleUpdateTotalItemScan(progress.items);
}

void DiskUsageForm::handleUpdatePath(const QString &path)
{
    m_progress->setPath(path);
}

void DiskUsageForm::handleUpdateTotalSubFolder(int total)
{
    m_progress->setTotalSteps(total);
}

void DiskUsageForm::handleUpdateScanProgress()
{
    m_progress->addStep();
}

void DiskUsageForm::handleUpdateTotalItemScan(int items)
{
    m_progress->setItems(items);
}

void DiskUsageForm::handleScanCancel()
{
    if (!m_scan)
        return;
    m_scan->requestStop();
    m_progress->showStopping();
}

void DiskUsageForm::handleResults()
{
    if (!m_scan)
        return;
    m_relay.finish();
    const bool cancelled = m_scan->stopRequested();
    const QString error = m_scan->error();
    std::shared_ptr<ScanResult> result = m_scan->result();
    m_scan.reset();
    emit showToolbarSignal(true);
    if (result && !cancelled) {
        showResults(std::move(result));
        return;
    }
    // A cancel that came after the models had been filled.
    if (result) {
        result.reset();
        startClearing();
        return;
    }
    showStartPage(error);
}

void DiskUsageForm::showResults(std::shared_ptr<ScanResult> result)
{
    m_progress->complete();
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
        // Scanned as a root it would be listed, and all that it leads to counted a second time.
        m_results->showNotice(
            tr("%1 is a link to a folder above it, where it is counted.").arg(item->path()));
        return;
    }
    m_folderIndex = folder;
    ScanJob job = makeJob(item->path());
    for (const FolderItem *above = item->parentFolder(); above; above = above->parentFolder())
        job.options.ancestors.append(above->path());
    m_folderScan.reset(new DiskUsageFolderScanThread(std::move(job)));
    connect(m_folderScan.get(), &DiskUsageFolderScanThread::updateFolderItemScan, &m_folderRelay,
            &core::ProgressRelay::setItems, Qt::DirectConnection);
    connect(m_folderScan.get(), &DiskUsageFolderScanThread::resultReady, this,
            &DiskUsageForm::handleFolderResults);
    m_folderRelay.restart();
    m_results->setBusy(true, tr("Scanning %1 again ...").arg(m_folderScan->folder()));
    emit showToolbarSignal(false);
    m_folderScan->start();
}

void DiskUsageForm::handleFolderResults()
{
    if (!m_folderScan)
        return;
    m_folderRelay.finish();
    const QString path = m_folderScan->folder();
    const QString error = m_folderScan->error();
    std::shared_ptr<ScanResult> result = m_folderScan->takeResult();
    std::unique_ptr<FolderItem> tree = m_folderScan->takeTree();
    m_folderScan.reset();
    m_results->setBusy(false);
    if (result && m_folderIndex.isValid()) {
        const Folder before = m_folders->folderItem(m_folderIndex)->folder();
        destroyInBackground(m_folders->replaceFolder(m_folderIndex, result, std::move(tree)));
        m_results->folderReplaced(path, before, *result);
    } else if (!error.isEmpty()) {
        m_results->showNotice(error, true);
    }
    emit showToolbarSignal(true);
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
    m_clear.reset(new DiskUsageClearRamThread(*m_folders, *m_biggestFiles, *m_dataFiles));
    connect(m_clear.get(), &DiskUsageClearRamThread::clearRAMStep, m_clearing,
            &DiskUsageClearRamForm::addStep);
    connect(m_clear.get(), &DiskUsageClearRamThread::clearRAMFinish, this, &DiskUsageForm::onClearRamFinish);
    m_clearing->begin(DiskUsageClearRamThread::steps);
    m_pages->setCurrentWidget(m_clearing);
    emit showToolbarSignal(false);
    m_clear->start();
}

void DiskUsageForm::onClearRamFinish()
{
    if (!m_clear)
        return;
    m_clear.reset();
    emit showToolbarSignal(true);
    if (m_nextRoot.isEmpty())
        showStartPage();
    else
        startScan(std::exchange(m_nextRoot, {}));
}

void DiskUsageForm::showStartPage(const QString &notice)
{
    if (!notice.isEmpty())
        m_start->showNotice(notice);
    m_pages->setCurrentWidget(m_start);
    emit startPageShown();
}

void DiskUsageForm::showOptions()
{
    m_options->load();
    m_pages->setCurrentWidget(m_options);
}
