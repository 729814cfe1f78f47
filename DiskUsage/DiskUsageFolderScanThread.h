// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageWorkerThread.h"
#include "DiskUsage/FolderModel.h"

// Scans one folder of a result again. The twin of DiskUsageWorkerThread, but what it finds stays its own
// until the form takes it: no model and no list of the result on the screen is touched.
class DiskUsageFolderScanThread : public core::WorkerThread, private diskusage::ScanListener
{
    Q_OBJECT

public:
    // `whole` is the result that the folder is a part of. Nobody may change it meanwhile.
    DiskUsageFolderScanThread(ScanJob job, std::shared_ptr<const diskusage::ScanResult> whole);
    ~DiskUsageFolderScanThread() override;

    QString folder() const { return m_job.root; }
    // After resultReady(): null for a cancelled or failed scan.
    std::shared_ptr<diskusage::ScanResult> takeResult() { return std::move(m_result); }
    // The whole result with this folder in it, for DataFilesModel::replace().
    DataFilesModel::Contents takeContents() { return std::move(m_contents); }
    // The rows for FolderModel::replaceFolder().
    std::unique_ptr<FolderItem> takeTree() { return std::move(m_tree); }

signals:
    // The running count of entries, for every entry.
    void updateFolderItemScan(int items);
    void resultReady();

protected:
    void work() override;
    void interrupt() override { m_job.enumerator->interrupt(); }

private:
    void totalSubFolders(int) override {}
    void folderEntered(const QString &) override {}
    void itemSeen(int itemsSeen) override { emit updateFolderItemScan(itemsSeen); }

    ScanJob m_job;
    std::shared_ptr<const diskusage::ScanResult> m_whole;
    std::shared_ptr<diskusage::ScanResult> m_result;
    DataFilesModel::Contents m_contents;
    std::unique_ptr<FolderItem> m_tree;
};
