// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/WorkerThread.h"

class BiggestFilesModel;
class DataFilesModel;
class FolderModel;

// Frees the models of a result, which takes seconds for a large drive. No view may be attached to them.
// Cannot be stopped, which would gain nothing.
class DiskUsageClearRamThread : public core::WorkerThread
{
    Q_OBJECT

public:
    // Number of clearRAMStep() signals.
    static constexpr int steps = 5;

    DiskUsageClearRamThread(FolderModel &folders, BiggestFilesModel &biggestFiles, DataFilesModel &dataFiles);

signals:
    void clearRAMStart();
    void clearRAMStep();
    void clearRAMFinish();

protected:
    void work() override;

private:
    FolderModel &m_folders;
    BiggestFilesModel &m_biggestFiles;
    DataFilesModel &m_dataFiles;
};
