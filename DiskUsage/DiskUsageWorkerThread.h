// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"
#include "core/WorkerThread.h"

#include <memory>

class BiggestFilesModel;
class DataFilesModel;
class FolderModel;

// What a scan needs, put together before it starts.
struct ScanJob {
    QString root;
    diskusage::ScanOptions options;
    std::unique_ptr<core::DirectoryEnumerator> enumerator;
};

// Scans a folder and fills the three models of the results page, which must have no view until resultReady()
// has arrived. A cancelled scan leaves them empty. The signals are emitted on this thread,
// updateTotalItemScan() for every entry of the file system: take them through a core::ProgressRelay.
class DiskUsageWorkerThread : public core::WorkerThread, private diskusage::ScanListener
{
    Q_OBJECT

public:
    DiskUsageWorkerThread(ScanJob job, FolderModel &folders, BiggestFilesModel &biggestFiles,
                          DataFilesModel &dataFiles);
    ~DiskUsageWorkerThread() override;

    // After resultReady(): null for a cancelled or failed scan.
    const std::shared_ptr<diskusage::ScanResult> &result() const { return m_result; }

signals:
    void updatePath(const QString &path);
    void updateTotalSubFolder(int total);
    void updateScanProgress();
    void updateTotalItemScan(int items);
    // The scan was cancelled; resultReady() follows.
    void scanCancel();
    void resultReady();

protected:
    void work() override;
    void abandon() override;
    void interrupt() override { m_job.enumerator->interrupt(); }

private:
    void buildReport();

    void totalSubFolders(int total) override;
    void folderEntered(const QString &path) override;
    void itemSeen(int itemsSeen) override;

    ScanJob m_job;
    FolderModel &m_folders;
    BiggestFilesModel &m_biggestFiles;
    DataFilesModel &m_dataFiles;
    std::shared_ptr<diskusage::ScanResult> m_result;
};
