// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/TrackCleanerForm.h"

#include "TrackCleaner/ItemRow.h"
#include "TrackCleaner/StayedDialog.h"
#include "TrackCleaner/TraceTexts.h"
#include "TrackCleaner/TrackCleanerClearThread.h"
#include "TrackCleaner/TrackCleanerDetailDialog.h"
#include "TrackCleaner/WindowsMachine.h"
#include "platform/Dialogs.h"
#include "platform/Processors.h"
#include "widgets/ElidedLabel.h"
#include "widgets/PageHeader.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using tracks::Item;
using tracks::ItemFlags;
using tracks::ItemRow;

TrackCleanerForm::TrackCleanerForm(QWidget *parent) : TrackCleanerForm(tracks::windowsLocations, parent) {}

TrackCleanerForm::TrackCleanerForm(TrackCleanerThread::LocationReader locations, QWidget *parent)
    : FLWidget(parent),
      m_locations(std::move(locations)),
      m_jobs(this),
      m_header(new PageHeader(PageHeader::Kind::Start, this)),
      m_notice(new NoticeBar(this)),
      m_stayedAction(new QAction(tr("Show What Stayed"), this)),
      m_summary(new QLabel(this)),
      m_progressLabel(new QLabel(this)),
      m_progressPath(new ElidedLabel(this, Qt::ElideMiddle)),
      m_progress(new QProgressBar(this))
{
    auto *page = new QVBoxLayout(this);
    page->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    page->setSpacing(theme::space);
    buildHeader(page);
    buildGroups(page);
    buildFooter(page);
    connect(m_stayedAction, &QAction::triggered, this, &TrackCleanerForm::showWhatStayed);
    loadSettings();
    showState();
}

TrackCleanerForm::~TrackCleanerForm() = default;

ItemFlags TrackCleanerForm::checked() const
{
    ItemFlags items{};
    for (const ItemRow *row : m_rows)
        items[tracks::indexOf(row->item())] = row->isChecked();
    return items;
}

// The checked items whose lists are complete.
tracks::ClearPlan TrackCleanerForm::plan() const
{
    tracks::ClearPlan plan{m_found, m_leftOut, {}};
    for (const ItemRow *row : m_rows)
        plan.items[tracks::indexOf(row->item())] =
            m_found && row->isChecked() && (*m_found)[row->item()].scanned;
    return plan;
}

void TrackCleanerForm::analyze()
{
    const ItemFlags items = checked();
    if (m_jobs.isBusy() || std::ranges::find(items, true) == items.end())
        return;
    m_notice->hide();
    m_leftovers = {};
    startScan(items);
}

void TrackCleanerForm::startScan(const ItemFlags &items)
{
    tracks::ScanOptions options;
    options.items = items;
    options.keepUsedToday = m_keepUsedToday->isChecked();
    options.readAheadThreads = platform::osIdleCores();
    auto *scan = new TrackCleanerThread(options, m_locations);
    if (m_found)
        scan->goOnFrom(m_found, m_leftOut, true);
    else if (m_forgotten)
        scan->goOnFrom(m_forgotten, m_leftOut, false);
    using Scan = TrackCleanerThread;
    using Form = TrackCleanerForm;
    connect(scan, &Scan::fileExplorerRecentFilesFinish, this, &Form::onFileExplorerRecentFilesScanFinish);
    connect(scan, &Scan::fileExplorerTypedPathsFinish, this, &Form::onFileExplorerTypedPathsScanFinish);
    connect(scan, &Scan::fileExplorerSearchHistoryFinish, this, &Form::onFileExplorerSearchHistoryScanFinish);
    connect(scan, &Scan::windowsRunDialogFinish, this, &Form::onWindowsRunDialogScanFinish);
    connect(scan, &Scan::windowsLogFilesFinish, this, &Form::onWindowsLogFilesScanFinish);
    connect(scan, &Scan::windowsErrorReportingFinish, this, &Form::onWindowsErrorReportingScanFinish);
    connect(scan, &Scan::windowsNetworkDataFinish, this, &Form::onWindowsNetworkDataScanFinish);
    connect(scan, &Scan::windowsTempFilesFinish, this, &Form::onWindowsTempFilesScanFinish);
    connect(scan, &Scan::updatePath, &m_jobs.relay(), &core::ProgressRelay::setPath, Qt::DirectConnection);
    connect(scan, &Scan::updateTotalItemScan, &m_jobs.relay(), &core::ProgressRelay::setItems,
            Qt::DirectConnection);

    m_cancelPressed = false;
    for (ItemRow *row : m_rows) {
        if (items[tracks::indexOf(row->item())])
            row->showFound({}, {}, false);
    }
    JobOptions job{.busyText = tr("the search for traces")};
    const QString title = tr("Scanning in progress. Please wait…");
    job.progress = [this, title](const core::ScanProgress &progress) {
        showProgress(title, progress, false);
    };
    m_jobs.start(std::move(job), scan, [this](Scan &ended) { takeScan(ended); });
    showProgress(title, {}, false);
    showState();
}

void TrackCleanerForm::takeScan(const TrackCleanerThread &scan)
{
    if (scan.result()) {
        m_found = scan.result();
        m_forgotten.reset();
        m_leftOut = scan.leftOut();
    } else {
        m_notice->showNotice(NoticeBar::Kind::Error, scan.error());
    }
    onTrackCleanerProcessScanFinish();
}

void TrackCleanerForm::onTrackCleanerProcessScanFinish()
{
    for (const ItemRow *row : m_rows)
        showItem(row->item());
    if (!m_clearingText.isEmpty()) {
        const bool whole = m_leftovers.stayed.empty();
        m_notice->showNotice(whole ? NoticeBar::Kind::Success : NoticeBar::Kind::Warning,
                             std::exchange(m_clearingText, {}), whole ? nullptr : m_stayedAction);
    }
    showState();
    emit analyzed();
}

void TrackCleanerForm::clear()
{
    const tracks::ClearPlan plan = this->plan();
    if (m_jobs.isBusy() || !plan.found || tracks::totalsOf(plan).all() == 0)
        return;
    const auto answer = platform::dialogs().ask(this, tr("Clear Tracking Data"), tracks::questionText(plan));
    if (answer != QMessageBox::Yes)
        return;
    if (tracks::totalsOf(plan).values > 0)
        saveEntries([this, plan](bool saved) { clearUnlessChanged(plan, saved); });
    else
        clearUnlessChanged(plan, true);
}

void TrackCleanerForm::clearUnlessChanged(const tracks::ClearPlan &plan, bool saved)
{
    if (!saved && platform::dialogs().ask(this, tr("Clear Tracking Data"),
                                          tr("The registry entries were not saved to a file and could not be "
                                             "put back. Clear them anyway?")) != QMessageBox::Yes)
        return;
    // The questions ran an event loop, so the state may have changed.
    if (!m_jobs.isBusy() && m_found == plan.found)
        startClearing(plan);
}

void TrackCleanerForm::startClearing(tracks::ClearPlan plan)
{
    auto *clearing = new TrackCleanerClearThread(std::move(plan));
    using Clear = TrackCleanerClearThread;
    using Form = TrackCleanerForm;
    connect(clearing, &Clear::fileExplorerRecentFilesFinish, this,
            &Form::onFileExplorerRecentFilesClearFinish);
    connect(clearing, &Clear::fileExplorerTypedPathsFinish, this, &Form::onFileExplorerTypedPathsClearFinish);
    connect(clearing, &Clear::fileExplorerSearchHistoryFinish, this,
            &Form::onFileExplorerSearchHistoryClearFinish);
    connect(clearing, &Clear::windowsRunDialogFinish, this, &Form::onWindowsRunDialogClearFinish);
    connect(clearing, &Clear::windowsLogFilesFinish, this, &Form::onWindowsLogFilesClearFinish);
    connect(clearing, &Clear::windowsErrorReportingFinish, this, &Form::onWindowsErrorReportingClearFinish);
    connect(clearing, &Clear::windowsNetworkDataFinish, this, &Form::onWindowsNetworkDataClearFinish);
    connect(clearing, &Clear::windowsTempFilesFinish, this, &Form::onWindowsTempFilesClearFinish);
    connect(clearing, &Clear::updatePath, &m_jobs.relay(), &core::ProgressRelay::setPath,
            Qt::DirectConnection);
    connect(clearing, &Clear::updateTotalSubFolder, &m_jobs.relay(), &core::ProgressRelay::setTotalSteps,
            Qt::DirectConnection);
    connect(clearing, &Clear::updateScanProgress, &m_jobs.relay(), &core::ProgressRelay::addStep,
            Qt::DirectConnection);

    m_cancelPressed = false;
    m_notice->hide();
    JobOptions job{.busyText = tr("the clearing of traces")};
    const QString title = tr("Clearing in progress. Please wait…");
    job.progress = [this, title](const core::ScanProgress &progress) { showProgress(title, progress, true); };
    m_jobs.start(std::move(job), clearing, [this](Clear &ended) { takeClearing(ended); });
    showProgress(title, {}, true);
    showState();
}

// Scans the cleared items again, unless the window is closing.
void TrackCleanerForm::takeClearing(const TrackCleanerClearThread &clearing)
{
    const tracks::ClearResult &result = clearing.result();
    m_leftovers = {clearing.plan().found, result.stayed};
    m_clearingText = clearing.error().isEmpty() ? tracks::resultText(result) : clearing.error();
    onTrackCleanerProcessClearFinish(result.deletedFiles);
    if (clearing.stopRequested() && !m_cancelPressed)
        onTrackCleanerProcessScanFinish();
    else
        startScan(clearing.plan().items);
}

void TrackCleanerForm::onTrackCleanerProcessClearFinish(int deletedFiles)
{
    m_progressLabel->setText(tr("%1 file(s) deleted").arg(QString::number(deletedFiles)));
}

void TrackCleanerForm::cancel()
{
    m_cancelPressed = true;
    m_jobs.cancel();
    m_cancel->setEnabled(false);
}

void TrackCleanerForm::forget()
{
    if (m_found)
        m_forgotten = std::move(m_found);
    m_found.reset();
    for (ItemRow *row : m_rows)
        row->showFound({}, {}, false);
    showState();
}

void TrackCleanerForm::showDetails(Item item)
{
    if (!m_found || m_jobs.isBusy())
        return;
    auto *dialog = new TrackCleanerDetailDialog(m_found, item, m_leftOut[tracks::indexOf(item)], this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &TrackCleanerDetailDialog::leftOutChanged, this,
            [this, found = m_found](Item changed, const std::vector<bool> &leftOut) {
                if (m_found != found)
                    return;
                m_leftOut[tracks::indexOf(changed)] = leftOut;
                showState();
            });
    dialog->open();
}

void TrackCleanerForm::showWhatStayed()
{
    if (m_leftovers.stayed.empty())
        return;
    auto *dialog = new StayedDialog(m_leftovers.found, m_leftovers.stayed, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}
