// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageWorkerThread.h"
#include "DiskUsage/FolderModel.h"

// Rescans one folder of a result. Like DiskUsageWorkerThread, but the result is kept until the form takes it:
// the models and lists on the screen are not changed.
class DiskUsageFolderScanThread : public core::WorkerThread, private diskusage::ScanListener
{
    Q_OBJECT

public:
    // `whole` is the result that contains the folder. It must not be changed meanwhile.
    DiskUsageFolderScanThread(ScanJob job, std::shared_ptr<const diskusage::ScanResult> whole);
    ~DiskUsageFolderScanThread() override;

    QString folder() const { return m_job.root; }
    // After resultReady(): null if the scan was cancelled or failed.
    std::shared_ptr<diskusage::ScanResult> takeResult() { return std::move(m_result); }
    // The whole result including the new data of this folder, for DataFilesModel::replace().
    DataFilesModel::Contents takeContents() { return std::move(m_contents); }
    // The rows for FolderModel::replaceFolder().
    std::unique_ptr<FolderItem> takeTree() { return std::move(m_tree); }

signals:
    // Emitted for every entry, with the running count.
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
