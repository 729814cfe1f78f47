// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/Members.h"
#include "core/WorkerThread.h"
#include "platform/FileProbe.h"
#include "platform/InterruptibleCalls.h"

// Queries the disk about the members of one group. Works on a copy of their records.
class FindDuplicateResultThread : public core::WorkerThread
{
    Q_OBJECT

public:
    FindDuplicateResultThread(QString root, std::vector<duplicates::FileRecord> files, int groupIndex)
        : m_root(std::move(root)),
          m_files(std::move(files)),
          m_groupIndex(groupIndex)
    {
        connect(this, &WorkerThread::done, this, &FindDuplicateResultThread::processFinish);
    }

    int groupIndex() const { return m_groupIndex; }

    // After processFinish(). One entry per member; empty if it failed.
    std::vector<duplicates::MemberFacts> takeMembers() { return std::move(m_members); }

signals:
    void processFinish();

protected:
    void work() override
    {
        const platform::InterruptibleCalls::Call call(m_calls);
        m_members = duplicates::readMembers(m_root, m_files, platform::fileProbe(), cancelFlag());
    }
    void interrupt() override { m_calls.interrupt(); }

private:
    platform::InterruptibleCalls m_calls;
    QString m_root;
    const std::vector<duplicates::FileRecord> m_files;
    const int m_groupIndex;
    std::vector<duplicates::MemberFacts> m_members;
};
