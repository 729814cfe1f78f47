// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageWorkerThread.h"

#include "DiskUsage/BiggestFilesModel.h"
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/FolderModel.h"
#include "platform/Icons.h"

DiskUsageWorkerThread::DiskUsageWorkerThread(ScanJob job, FolderModel &folders,
                                             BiggestFilesModel &biggestFiles, DataFilesModel &dataFiles)
    : m_job(std::move(job)),
      m_folders(folders),
      m_biggestFiles(biggestFiles),
      m_dataFiles(dataFiles)
{
    connect(this, &WorkerThread::done, this, [this] {
        if (stopRequested())
            emit scanCancel();
        emit resultReady();
    });
}

DiskUsageWorkerThread::~DiskUsageWorkerThread() = default;

void DiskUsageWorkerThread::work()
{
    m_folders.beginScan(m_job.root);
    m_folders.setFolderImage(platform::systemFolderIcon());
    m_result = std::make_shared<diskusage::ScanResult>(
        diskusage::scanFolder(m_job.root, m_job.options, *m_job.enumerator, *this, cancelFlag()));
    if (!stopRequested())
        buildReport();
    if (stopRequested())
        abandon();
}

void DiskUsageWorkerThread::abandon()
{
    m_folders.removeColumns(0, FolderModel::ColumnTotal);
    m_dataFiles.clear();
    m_biggestFiles.clear();
    m_result.reset();
}

void DiskUsageWorkerThread::buildReport()
{
    m_folders.setResult(m_result);
    if (stopRequested())
        return;
    m_biggestFiles.setFiles(m_result->biggestFiles);
    m_dataFiles.setResult(m_result, cancelFlag());
}

void DiskUsageWorkerThread::totalSubFolders(int total)
{
    emit updateTotalSubFolder(total);
}

void DiskUsageWorkerThread::folderEntered(const QString &path)
{
    emit updatePath(path);
    emit updateScanProgress();
}

void DiskUsageWorkerThread::itemSeen(int itemsSeen)
{
    emit updateTotalItemScan(itemsSeen);
}
