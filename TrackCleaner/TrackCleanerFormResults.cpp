// SPDX-License-Identifier: GPL-3.0-or-later

// How the track cleaner's page shows the results of its jobs, and saving and restoring registry entries.

#include "TrackCleaner/ItemRow.h"
#include "TrackCleaner/TraceTexts.h"
#include "TrackCleaner/TrackCleanerForm.h"
#include "TrackCleaner/WindowsMachine.h"
#include "TrackCleaner/engine/RegFile.h"
#include "platform/Dialogs.h"
#include "platform/NewFile.h"
#include "widgets/ElidedLabel.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

using tracks::Item;
using tracks::ItemFlags;
using tracks::ItemRow;

namespace
{

constexpr qint64 maxRegFile = qint64{64} << 20;

QString fileFilter()
{
    return TrackCleanerForm::tr("Registry entries (*.reg)");
}

struct PutBack {
    QString problem; // empty: all entries are back
    bool changed = false;
};

PutBack putBackFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > maxRegFile)
        return {TrackCleanerForm::tr("%1 could not be read.").arg(path)};
    const tracks::RegFileContent content = tracks::parseRegFile(file.readAll());
    if (content.fault != tracks::RegFileFault::None)
        return {tracks::faultText(content)};
    tracks::WindowsRegistry registry;
    return {tracks::putBack(content.keys, registry)
                ? QString()
                : TrackCleanerForm::tr("Windows refused some of the entries."),
            true};
}

} // namespace

void TrackCleanerForm::showCount(Item item, int count, int size)
{
    const bool sized = tracks::catalogue()[tracks::indexOf(item)].sized;
    m_rows[tracks::indexOf(item)]->showFound(
        sized ? tracks::countText(count, static_cast<quint64>(std::max(size, 0)) << 20)
              : tracks::countText(count),
        {}, false);
}

// Shows exact bytes; the signal only carries whole megabytes.
void TrackCleanerForm::showItem(Item item)
{
    ItemRow *row = m_rows[tracks::indexOf(item)];
    if (!m_found || !(*m_found)[item].scanned) {
        row->showFound({}, {}, false);
        return;
    }
    const tracks::ItemTraces &traces = (*m_found)[item];
    const int count = static_cast<int>(traces.count());
    row->showFound(tracks::catalogue()[tracks::indexOf(item)].sized ? tracks::countText(count, traces.bytes)
                                                                    : tracks::countText(count),
                   tracks::noteText(*m_found, item), count > 0);
}

void TrackCleanerForm::showState()
{
    const bool busy = m_jobs.isBusy();
    const ItemFlags items = checked();
    const tracks::ClearPlan toClear = plan();
    const tracks::ClearTotals totals = m_found ? tracks::totalsOf(toClear) : tracks::ClearTotals();
    for (ItemRow *row : m_rows)
        row->setBusy(busy);
    m_keepUsedToday->setEnabled(!busy);
    m_analyze->setEnabled(!busy && std::ranges::find(items, true) != items.end());
    m_clear->setEnabled(!busy && totals.all() > 0);
    // The focused widget may have been disabled; the focus moves to the next step.
    const bool wasBusy = !m_cancel->isHidden();
    const bool waiting = wasBusy && m_cancel->hasFocus();
    m_cancel->setEnabled(busy);
    m_cancel->setVisible(busy);
    if (busy && !wasBusy)
        m_cancel->setFocus();
    else if (!busy && waiting)
        m_analyze->setFocus();
    for (QWidget *widget : std::initializer_list<QWidget *>{m_progressLabel, m_progress, m_progressPath})
        widget->setVisible(busy);
    m_summary->setVisible(!busy);
    m_putBack->setEnabled(!busy);
    m_save->setEnabled(!busy && m_found && !tracks::foundKeys(*m_found, items).empty());
    if (!m_found)
        m_summary->setText(tr("Analyze shows what there is; nothing is cleared by it."));
    else if (totals.all() > 0)
        m_summary->setText(tr("To be cleared: %1.").arg(tracks::totalsText(totals)));
    else
        m_summary->setText(tr("There is nothing to clear."));
}

void TrackCleanerForm::showProgress(const QString &title, const core::ScanProgress &progress, bool known)
{
    m_progressLabel->setText(title);
    m_progress->setRange(0, known ? std::max(progress.totalSteps, 1) : 0);
    m_progress->setValue(progress.steps);
    QString path = progress.path;
    if (!known && progress.items > 0)
        path = tr("%1 found, %2").arg(QString::number(progress.items), path);
    m_progressPath->setText(path);
}

void TrackCleanerForm::showSmallJob(const QString &title)
{
    m_notice->hide();
    showProgress(title, {}, false);
    showState();
}

void TrackCleanerForm::saveRegistryEntries()
{
    saveEntries([](bool) {});
}

// `then` is not called if the user cancelled the job.
void TrackCleanerForm::saveEntries(const std::function<void(bool saved)> &then)
{
    if (!m_found || m_jobs.isBusy())
        return;
    const QString suggested = QDir::toNativeSeparators(QDir::homePath()) + QLatin1Char('\\') +
                              tr("Track Cleaner registry entries") + QStringLiteral(".reg");
    const auto found = m_found;
    const QString file =
        platform::dialogs().chooseFileToSave(this, tr("Save the registry entries"), suggested, fileFilter());
    if (file.isEmpty()) {
        then(false);
        return;
    }
    if (m_jobs.isBusy())
        return;
    m_jobs.run(
        {.busyText = tr("the saving of the registry entries")},
        [found, items = checked(), file](const core::JobControl &) {
            return platform::NewFile::save(file, tracks::regFile(tracks::foundKeys(*found, items)));
        },
        [this, file, then](auto &job) {
            showState();
            const QString problem = job.takeResult().value_or(job.error());
            if (problem.isEmpty())
                m_notice->showNotice(NoticeBar::Kind::Success,
                                     tr("The registry entries were saved to %1.").arg(file));
            else
                m_notice->showNotice(NoticeBar::Kind::Error,
                                     tr("%1 could not be written: %2").arg(file, problem));
            if (!job.stopRequested())
                then(problem.isEmpty());
        });
    showSmallJob(tr("Saving the registry entries…"));
}

void TrackCleanerForm::putRegistryEntriesBack()
{
    const QStringList chosen = platform::dialogs().chooseFilesToOpen(
        this, tr("Put back registry entries"), QDir::toNativeSeparators(QDir::homePath()), fileFilter());
    if (chosen.isEmpty() || m_jobs.isBusy())
        return;
    m_jobs.run(
        {.busyText = tr("the putting back of registry entries")},
        [file = chosen.first()](const core::JobControl &) { return putBackFile(file); },
        [this](auto &job) {
            const PutBack result = job.takeResult().value_or(PutBack{job.error(), true});
            if (result.problem.isEmpty())
                m_notice->showNotice(NoticeBar::Kind::Success, tr("The registry entries were put back."));
            else
                m_notice->showNotice(NoticeBar::Kind::Error, result.problem);
            if (result.changed)
                forget(); // the counts are out of date
            showState();
        });
    showSmallJob(tr("Putting the registry entries back…"));
}

void TrackCleanerForm::onFileExplorerRecentFilesScanFinish(int count)
{
    showCount(Item::RecentFiles, count, 0);
}

void TrackCleanerForm::onFileExplorerTypedPathsScanFinish(int count)
{
    showCount(Item::TypedPaths, count, 0);
}

void TrackCleanerForm::onFileExplorerSearchHistoryScanFinish(int count)
{
    showCount(Item::SearchHistory, count, 0);
}

void TrackCleanerForm::onWindowsRunDialogScanFinish(int count)
{
    showCount(Item::RunDialog, count, 0);
}

void TrackCleanerForm::onWindowsLogFilesScanFinish(int count, int size)
{
    showCount(Item::LogFiles, count, size);
}

void TrackCleanerForm::onWindowsErrorReportingScanFinish(int count, int size)
{
    showCount(Item::ErrorReporting, count, size);
}

void TrackCleanerForm::onWindowsNetworkDataScanFinish(int count, int size)
{
    showCount(Item::NetworkData, count, size);
}

void TrackCleanerForm::onWindowsTempFilesScanFinish(int count, int size)
{
    showCount(Item::TempFiles, count, size);
}

void TrackCleanerForm::onFileExplorerRecentFilesClearFinish(int count)
{
    showCount(Item::RecentFiles, count, 0);
}

void TrackCleanerForm::onFileExplorerTypedPathsClearFinish(int count)
{
    showCount(Item::TypedPaths, count, 0);
}

void TrackCleanerForm::onFileExplorerSearchHistoryClearFinish(int count)
{
    showCount(Item::SearchHistory, count, 0);
}

void TrackCleanerForm::onWindowsRunDialogClearFinish(int count)
{
    showCount(Item::RunDialog, count, 0);
}

void TrackCleanerForm::onWindowsLogFilesClearFinish(int count, int size)
{
    showCount(Item::LogFiles, count, size);
}

void TrackCleanerForm::onWindowsErrorReportingClearFinish(int count, int size)
{
    showCount(Item::ErrorReporting, count, size);
}

void TrackCleanerForm::onWindowsNetworkDataClearFinish(int count, int size)
{
    showCount(Item::NetworkData, count, size);
}

void TrackCleanerForm::onWindowsTempFilesClearFinish(int count, int size)
{
    showCount(Item::TempFiles, count, size);
}
