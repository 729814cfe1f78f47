// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageFolderScanThread.h"

#include "DiskUsage/engine/Merge.h"

DiskUsageFolderScanThread::DiskUsageFolderScanThread(ScanJob job,
                                                     std::shared_ptr<const diskusage::ScanResult> whole)
    : m_job(std::move(job)),
      m_whole(std::move(whole))
{
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
    if (const int folder = m_whole ? findFolder(*m_whole, m_job.root) : -1; folder > 0)
        m_contents = DataFilesModel::prepared(merged(*m_whole, folder, *result, cancelFlag()), cancelFlag());
    m_whole.reset();
    if (stopRequested())
        return;
    result->dropFiles(); // they are in the merged result
    m_tree = FolderModel::buildTree(*result);
    m_result = std::move(result);
}
