// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateThread.h"

FindDuplicateThread::FindDuplicateThread(FindDuplicateJob job) : m_job(std::move(job))
{
    connect(this, &WorkerThread::done, this, &FindDuplicateThread::scanFinish);
}

void FindDuplicateThread::work()
{
    m_result = duplicates::findDuplicates(m_job.root, m_job.options, *m_job.enumerator, *this, cancelFlag());
}

void FindDuplicateThread::totalSubFolders(int total)
{
    emit updateTotalSubFolder(total);
}

void FindDuplicateThread::folderEntered()
{
    emit updateScanProgress();
}

void FindDuplicateThread::pathChanged(const QString &folder)
{
    emit updatePath(folder);
}

void FindDuplicateThread::itemSeen(int itemsSeen)
{
    emit updateTotalItemScan(itemsSeen);
}
