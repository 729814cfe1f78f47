// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/groups/FileGroups.h"
#include "core/WorkerThread.h"
#include "platform/InterruptibleCalls.h"

#include <QList>

#include <memory>
#include <vector>

// Determines which files the list of groups shows, and then checks which of them are missing. Releases the
// groups before it accesses the disk. All signals are emitted on the thread that this object lives in.
class FindDuplicateMainResultThread : public core::WorkerThread
{
    Q_OBJECT

public:
    explicit FindDuplicateMainResultThread(std::shared_ptr<const duplicates::FileGroups> groups);

signals:
    void processFinish();
    // For all groups in batches: whether the first file exists, from group `first` on.
    void firstFilesChecked(int first, const QList<bool> &exist);

protected:
    void work() override;
    void abandon() override;
    void interrupt() override { m_calls.interrupt(); }

private:
    void checkFirstFiles();

    std::shared_ptr<const duplicates::FileGroups> m_groups;
    std::vector<QString> m_firstFiles;
    platform::InterruptibleCalls m_calls;
};
