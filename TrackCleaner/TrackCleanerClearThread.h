// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Clear.h"
#include "core/WorkerThread.h"

// Clears what was chosen of a frozen list, item by item in the catalogue's order. The signals of the items
// and the two at the end are emitted on the thread that this object lives in. An item's signal carries zeros
// whatever stayed: who wants to know counts again, or asks for result().
class TrackCleanerClearThread : public core::WorkerThread, private tracks::ClearListener
{
    Q_OBJECT

public:
    explicit TrackCleanerClearThread(tracks::ClearPlan plan);

    // After processFinish().
    const tracks::ClearResult &result() const { return m_result; }
    const tracks::ClearPlan &plan() const { return m_plan; }

signals:
    void fileExplorerRecentFilesFinish(int itemCount);
    void fileExplorerTypedPathsFinish(int itemCount);
    void fileExplorerSearchHistoryFinish(int itemCount);
    void windowsRunDialogFinish(int itemCount);
    void windowsLogFilesFinish(int itemCount, int finalSize);
    void windowsErrorReportingFinish(int itemCount, int finalSize);
    void windowsNetworkDataFinish(int itemCount, int finalSize);
    void windowsTempFilesFinish(int itemCount, int finalSize);
    // Once, last, also after a cancel: how many files were deleted. Entries of the registry do not count.
    void processFinish(int deletedFiles);
    // Once, before processFinish(): something stayed.
    void cannotDelete();

    // For every file, on this thread: take them through a core::ProgressRelay.
    void updatePath(const QString &path);
    void updateTotalSubFolder(int files); // to be removed in all; once, first
    void updateScanProgress();            // a file is done

protected:
    void work() override;

private:
    void itemBegins(tracks::Item) override {}
    void fileBegins(const QString &path, int done) override;
    void itemCleared(tracks::Item item) override;
    void emitItem(tracks::Item item);

    tracks::ClearPlan m_plan;
    tracks::ClearResult m_result;
};
