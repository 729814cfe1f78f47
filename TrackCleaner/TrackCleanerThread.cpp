// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/TrackCleanerThread.h"

#include "TrackCleaner/WindowsMachine.h"
#include "platform/FileProbe.h"

#include <utility>

using tracks::Item;

TrackCleanerThread::TrackCleanerThread(tracks::ScanOptions options, LocationReader locations)
    : m_options(std::move(options)),
      m_locations(std::move(locations))
{
    connect(this, &WorkerThread::done, this, &TrackCleanerThread::processFinish);
}

void TrackCleanerThread::goOnFrom(std::shared_ptr<const tracks::ScanResult> found, tracks::LeftOut leftOut,
                                  bool keepOthers)
{
    m_keepOthers = keepOthers;
    m_former = std::move(found);
    m_formerLeftOut = std::move(leftOut);
}

void TrackCleanerThread::work()
{
    m_options.locations = m_locations();
    m_options.now = tracks::currentFileTime();
    tracks::WindowsRegistry registry;
    tracks::WindowsRights rights;
    auto found = std::make_shared<tracks::ScanResult>(tracks::scanTraces(
        m_options, {m_enumerator, platform::fileProbe(), registry, rights}, *this, cancelFlag()));
    if (m_former) {
        for (std::size_t item = 0; item < tracks::itemCount; ++item) {
            if (m_keepOthers && !m_options.items[item])
                found->items[item] = m_former->items[item];
        }
        m_leftOut = tracks::carriedOver(*m_former, m_formerLeftOut, *found);
    }
    m_result = std::move(found);
}

void TrackCleanerThread::folderEntered(const QString &path)
{
    emit updatePath(path);
}

void TrackCleanerThread::traceFound(int tracesSoFar)
{
    emit updateTotalItemScan(tracesSoFar);
}

void TrackCleanerThread::itemScanned(Item item, const tracks::ItemTraces &traces)
{
    deliver([this, item, count = static_cast<int>(traces.count()),
             size = static_cast<int>(traces.bytes >> 20)] { emitItem(item, count, size); });
}

void TrackCleanerThread::emitItem(Item item, int count, int size)
{
    switch (item) {
    case Item::RecentFiles:
        return emit fileExplorerRecentFilesFinish(count);
    case Item::TypedPaths:
        return emit fileExplorerTypedPathsFinish(count);
    case Item::SearchHistory:
        return emit fileExplorerSearchHistoryFinish(count);
    case Item::RunDialog:
        return emit windowsRunDialogFinish(count);
    case Item::LogFiles:
        return emit windowsLogFilesFinish(count, size);
    case Item::ErrorReporting:
        return emit windowsErrorReportingFinish(count, size);
    case Item::NetworkData:
        return emit windowsNetworkDataFinish(count, size);
    case Item::TempFiles:
        return emit windowsTempFilesFinish(count, size);
    }
}
