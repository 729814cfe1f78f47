// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageFolderScanThread.h"

DiskUsageFolderScanThread::DiskUsageFolderScanThread(ScanJob job) : m_job(std::move(job))
{
    // The list of file types stays that of the whole scan: nobody would read the records of this one.
    m_job.options.collectFileTypes = false;
}

DiskUsageFolderScanThread::~DiskUsageFolderScanThread()
{
    FolderModel::destroyTree(std::move(m_tree));
}

void DiskUsageFolderScanThread::run()
{
    try {
        auto result = std::make_shared<diskusage::ScanResult>(
            diskusage::scanFolder(m_job.root, m_job.options, *m_job.enumerator, *this, cancelFlag()));
        if (!stopRequested() && !result->folders.empty()) {
            m_tree = FolderModel::buildTree(*result);
            m_result = std::move(result);
        }
    } catch (const std::exception &) { // what is thrown here is a lack of memory
        m_error = tr("The scan ran out of memory.");
    }
    deliver([this] { emit resultReady(); });
}
