// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/FileRecord.h"
#include "core/WorkerThread.h"

#include <QList>

#include <memory>
#include <vector>

// Puts the rows of the list of groups in order, and looks afterwards which groups have lost their first file.
// The groups must not change in number or members while it runs; their `checked` and `moved` bytes may. It
// lets go of them before it asks the disk. All signals come on the thread that this object lives in.
class FindDuplicateMainResultThread : public core::WorkerThread
{
    Q_OBJECT

public:
    explicit FindDuplicateMainResultThread(
        std::shared_ptr<const std::vector<duplicates::DuplicateGroup>> groups);

    // After processFinish().
    std::vector<int> takeListed() { return std::move(m_listed); }

signals:
    void processFinish();
    // For all groups in turn, some at a time: from `first` on, whether the first file is there.
    void firstFilesChecked(int first, const QList<bool> &exist);

protected:
    void work() override;
    void abandon() override;

private:
    void prepare();
    void checkFirstFiles();

    std::shared_ptr<const std::vector<duplicates::DuplicateGroup>> m_groups;
    std::vector<int> m_listed;
    std::vector<QString> m_firstFiles;
};
