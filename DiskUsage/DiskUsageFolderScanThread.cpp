// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageFolderScanThread.h"

DiskUsageFolderScanThread::DiskUsageFolderScanThread(ScanJob job) : m_job(std::move(job))
{
    // The list of file types stays that of the whole scan: nobody would read the records of this one.
    m_job.options.collectFileTypes = false;
    connect(this, &WorkerThread::done, this, &DiskUsageFolderScanThread::resultReady);
}

DiskUsageFolderScanThread::~DiskUsageFolderScanThread()
{
    FolderModel::destroyTree(std::move(m_tree));
}

void DiskUsageFolderScanThread::work()
{
    auto result = std::make_shared<diskusage::ScanResult>(
        diskusage::scanFolder(m_job.root, m_job.options, *m_job.enumerator, *this, cancelFlag()));
    if (stopRequested() || result->folders.empty())
        return;
    m_tree = FolderModel::buildTree(*result);
    m_result = std::move(result);
}
