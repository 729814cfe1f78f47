// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/TrackCleanerClearThread.h"

#include "TrackCleaner/WindowsMachine.h"

#include <utility>

using tracks::Item;

TrackCleanerClearThread::TrackCleanerClearThread(tracks::ClearPlan plan) : m_plan(std::move(plan))
{
    connect(this, &WorkerThread::done, this, [this] {
        if (!m_result.stayed.empty())
            emit cannotDelete();
        emit processFinish(m_result.deletedFiles);
    });
}

void TrackCleanerClearThread::work()
{
    emit updateTotalSubFolder(tracks::totalsOf(m_plan).files);
    tracks::WindowsRegistry registry;
    tracks::GuardedRemover remover;
    m_result = tracks::clearTraces(m_plan, registry, remover, *this, cancelFlag());
}

void TrackCleanerClearThread::fileBegins(const QString &path, int done)
{
    if (done > 0)
        emit updateScanProgress();
    emit updatePath(path);
}

void TrackCleanerClearThread::itemCleared(Item item)
{
    deliver([this, item] { emitItem(item); });
}

void TrackCleanerClearThread::emitItem(Item item)
{
    switch (item) {
    case Item::RecentFiles:
        return emit fileExplorerRecentFilesFinish(0);
    case Item::TypedPaths:
        return emit fileExplorerTypedPathsFinish(0);
    case Item::SearchHistory:
        return emit fileExplorerSearchHistoryFinish(0);
    case Item::RunDialog:
        return emit windowsRunDialogFinish(0);
    case Item::LogFiles:
        return emit windowsLogFilesFinish(0, 0);
    case Item::ErrorReporting:
        return emit windowsErrorReportingFinish(0, 0);
    case Item::NetworkData:
        return emit windowsNetworkDataFinish(0, 0);
    case Item::TempFiles:
        return emit windowsTempFilesFinish(0, 0);
    }
}
