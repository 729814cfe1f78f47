// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateThread.h"

FindDuplicateThread::FindDuplicateThread(FindDuplicateJob job) : m_job(std::move(job)) {}

void FindDuplicateThread::run()
{
    try {
        m_result =
            duplicates::findDuplicates(m_job.root, m_job.options, *m_job.enumerator, *this, cancelFlag());
    } catch (const std::exception &) { // what is thrown here is a lack of memory
        m_error = tr("The scan ran out of memory.");
    }
    deliver([this] { emit scanFinish(); });
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
