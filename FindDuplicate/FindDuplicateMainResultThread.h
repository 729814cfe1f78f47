// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/GroupRows.h"
#include "FindDuplicate/engine/Grouping.h"
#include "core/WorkerThread.h"

#include <QList>

#include <vector>

// Puts the rows of the list of groups in order, and looks afterwards which groups have lost their first file.
// The groups must not change in number or members while it runs; their `checked` bytes may. All signals come
// on the thread that this object lives in.
class FindDuplicateMainResultThread : public core::WorkerThread
{
    Q_OBJECT

public:
    explicit FindDuplicateMainResultThread(const std::vector<duplicates::DuplicateGroup> &groups);

    // After processFinish().
    std::vector<int> takeListed() { return std::move(m_listed); }

signals:
    void processFinish();
    // For all groups in turn, some at a time: from `first` on, whether the first file is there.
    void firstFilesChecked(int first, const QList<bool> &exist);

protected:
    void run() override;

private:
    void checkFirstFiles();

    const std::vector<duplicates::DuplicateGroup> &m_groups;
    std::vector<int> m_listed;
};
