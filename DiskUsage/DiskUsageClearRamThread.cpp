// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageClearRamThread.h"

#include "DiskUsage/BiggestFilesModel.h"
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/FolderModel.h"

DiskUsageClearRamThread::DiskUsageClearRamThread(FolderModel &folders, BiggestFilesModel &biggestFiles,
                                                 DataFilesModel &dataFiles)
    : WorkerThread(QThread::HighPriority),
      m_folders(folders),
      m_biggestFiles(biggestFiles),
      m_dataFiles(dataFiles)
{
    connect(this, &WorkerThread::done, this, &DiskUsageClearRamThread::clearRAMFinish);
}

void DiskUsageClearRamThread::work()
{
    emit clearRAMStart();
    m_folders.removeColumns(0, m_folders.columnCount());
    emit clearRAMStep();
    m_folders.clear();
    emit clearRAMStep();
    m_biggestFiles.removeColumns(0, m_biggestFiles.columnCount());
    emit clearRAMStep();
    m_biggestFiles.clear();
    emit clearRAMStep();
    m_dataFiles.clear();
    emit clearRAMStep();
}
