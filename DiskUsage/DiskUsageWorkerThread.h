// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"
#include "core/WorkerThread.h"

#include <memory>

class BiggestFilesModel;
class DataFilesModel;
class FolderModel;

// The parameters of a scan.
struct ScanJob {
    QString root;
    diskusage::ScanOptions options;
    std::unique_ptr<core::DirectoryEnumerator> enumerator;
};

// Scans a folder and fills the three models of the results page, which must have no view before
// resultReady(). A cancelled scan leaves them empty. Signals are emitted on the worker thread,
// updateTotalItemScan() for every file system entry: connect through a core::ProgressRelay.
class DiskUsageWorkerThread : public core::WorkerThread, private diskusage::ScanListener
{
    Q_OBJECT

public:
    DiskUsageWorkerThread(ScanJob job, FolderModel &folders, BiggestFilesModel &biggestFiles,
                          DataFilesModel &dataFiles);
    ~DiskUsageWorkerThread() override;

    // After resultReady(): null if the scan was cancelled or failed.
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
