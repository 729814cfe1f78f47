// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/groups/FileGroups.h"
#include "core/WorkerThread.h"
#include "platform/InterruptibleCalls.h"

#include <QList>

#include <memory>
#include <vector>

// Reads which files the list of groups shows, and looks afterwards which of them have gone. It lets go of the
// groups before it asks the disk. All signals come on the thread that this object lives in.
class FindDuplicateMainResultThread : public core::WorkerThread
{
    Q_OBJECT

public:
    explicit FindDuplicateMainResultThread(std::shared_ptr<const duplicates::FileGroups> groups);

signals:
    void processFinish();
    // For all groups in turn, some at a time: from `first` on, whether the first file is there.
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
