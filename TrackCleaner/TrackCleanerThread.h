// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Scan.h"
#include "core/WorkerThread.h"
#include "platform/Win32Enumerator.h"

#include <functional>
#include <memory>

// Scans for the traces of the items whose flag is set, in catalogue order. Result signals are emitted on the
// thread that this object lives in; items that were not requested, or not reached before a cancel, have none.
class TrackCleanerThread : public core::WorkerThread, private tracks::ScanListener
{
    Q_OBJECT

public:
    using LocationReader = std::function<tracks::Locations()>;

    // The thread fills in locations and time of `options`.
    TrackCleanerThread(tracks::ScanOptions options, LocationReader locations);

    // Call before start(): entries left out of these lists stay left out, and with `keepOthers` the lists of
    // items that are not scanned are kept.
    void goOnFrom(std::shared_ptr<const tracks::ScanResult> found, tracks::LeftOut leftOut, bool keepOthers);

    // Valid after processFinish(); null if the job failed.
    const std::shared_ptr<const tracks::ScanResult> &result() const { return m_result; }
    const tracks::LeftOut &leftOut() const { return m_leftOut; }

signals:
    // Emitted per folder and trace on the worker thread: connect through a core::ProgressRelay.
    void updatePath(const QString &path);
    void updateTotalItemScan(int items);

    // Sizes are in MB, rounded down.
    void fileExplorerRecentFilesFinish(int count);
    void fileExplorerTypedPathsFinish(int count);
    void fileExplorerSearchHistoryFinish(int count);
    void windowsRunDialogFinish(int count);
    void windowsLogFilesFinish(int count, int size);
    void windowsErrorReportingFinish(int count, int size);
    void windowsNetworkDataFinish(int count, int size);
    void windowsTempFilesFinish(int count, int size);
    // Emitted once, last, also after a cancel.
    void processFinish();

protected:
    void work() override;
    void interrupt() override { m_enumerator.interrupt(); }

private:
    void itemBegins(tracks::Item) override {}
    void folderEntered(const QString &path) override;
    void traceFound(int tracesSoFar) override;
    void itemScanned(tracks::Item item, const tracks::ItemTraces &traces) override;
    void emitItem(tracks::Item item, int count, int size);

    tracks::ScanOptions m_options;
    LocationReader m_locations;
    platform::Win32Enumerator m_enumerator;
    std::shared_ptr<const tracks::ScanResult> m_former;
    tracks::LeftOut m_formerLeftOut;
    bool m_keepOthers = false;
    std::shared_ptr<const tracks::ScanResult> m_result;
    tracks::LeftOut m_leftOut;
};
