// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/Scan.h"
#include "core/WorkerThread.h"

#include <memory>

// The parameters of a scan.
struct FindDuplicateJob {
    QString root;
    duplicates::ScanOptions options;
    std::unique_ptr<core::DirectoryEnumerator> enumerator;
};

// Scans a folder for duplicates. All signals except scanFinish() are emitted on the worker thread for every
// file system entry: connect through a core::ProgressRelay.
class FindDuplicateThread : public core::WorkerThread, private duplicates::ScanListener
{
    Q_OBJECT

public:
    explicit FindDuplicateThread(FindDuplicateJob job);

    // After scanFinish(). A cancelled scan has the groups found so far.
    duplicates::ScanResult takeResult() { return std::move(m_result); }

signals:
    void scanFinish(); // once, also after a cancel; on the thread that this object lives in
    void updateScanProgress();
    void updatePath(const QString &path);
    void updateTotalSubFolder(int total);
    void updateTotalItemScan(int totalItem);

protected:
    void work() override;
    void interrupt() override { m_job.enumerator->interrupt(); }

private:
    void totalSubFolders(int total) override;
    void folderEntered() override;
    void pathChanged(const QString &folder) override;
    void itemSeen(int itemsSeen) override;

    FindDuplicateJob m_job;
    duplicates::ScanResult m_result;
};
