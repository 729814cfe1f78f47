// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/GroupRows.h"
#include "FindDuplicate/engine/Grouping.h"
#include "core/WorkerThread.h"

#include <QList>

#include <vector>

// Builds the rows of the list of groups, and looks afterwards which groups have lost their first file. The
// groups must not change in number or members while it runs; their `checked` bytes may, once processFinish()
// has arrived. All signals come on the thread that this object lives in.
class FindDuplicateMainResultThread : public core::WorkerThread
{
    Q_OBJECT

public:
    explicit FindDuplicateMainResultThread(const std::vector<duplicates::DuplicateGroup> &groups);

    // After processFinish().
    std::vector<duplicates::GroupRow> takeRows() { return std::move(m_rows); }
    const duplicates::GroupStatistics &statistics() const { return m_statistics; }

signals:
    void processFinish();
    // For all groups in turn, some at a time: from `first` on, whether the first file is there.
    void firstFilesChecked(int first, const QList<bool> &exist);

protected:
    void run() override;

private:
    void checkFirstFiles();

    const std::vector<duplicates::DuplicateGroup> &m_groups;
    std::vector<duplicates::GroupRow> m_rows;
    duplicates::GroupStatistics m_statistics;
};
