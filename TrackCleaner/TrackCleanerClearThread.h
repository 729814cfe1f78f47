// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Clear.h"
#include "core/WorkerThread.h"

// Clears the chosen traces of a finished scan, item by item in catalogue order. Item signals and the two
// final ones are emitted on the thread that this object lives in. The counts of an item's signal are always
// zero, whatever was left; scan again or call result() for the real outcome.
class TrackCleanerClearThread : public core::WorkerThread, private tracks::ClearListener
{
    Q_OBJECT

public:
    explicit TrackCleanerClearThread(tracks::ClearPlan plan);

    // Valid after processFinish().
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
    // Emitted once, last, also after a cancel, with the number of deleted files. Registry entries are not
    // counted.
    void processFinish(int deletedFiles);
    // Emitted once before processFinish() if something could not be removed.
    void cannotDelete();

    // Emitted per file on the worker thread: connect through a core::ProgressRelay.
    void updatePath(const QString &path);
    void updateTotalSubFolder(int files); // total files to remove; emitted once, first
    void updateScanProgress();            // one file is done

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
