// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/Members.h"
#include "core/WorkerThread.h"

// What was shown of the member that the user wants removed. A copy of everything, for the list may change or
// go while the user is being asked.
struct RemovalRequest {
    QString root;
    int groupIndex = -1;
    int memberIndex = -1;
    duplicates::DuplicateGroup group;
    duplicates::MemberFacts shown; // of that member

    const duplicates::FileRecord &file() const
    {
        return group.members[static_cast<std::size_t>(memberIndex)];
    }
};

// Looks at a group once more before the user is asked, and again, and moves one member to the recycle bin,
// after a Yes. Disk and shell may take their time for each.
class FindDuplicateRemovalThread : public core::WorkerThread
{
    Q_OBJECT

public:
    enum class Step { Check, Move };
    enum class Outcome {
        Ready,   // checked: nothing stands in the way
        Moved,   // to the recycle bin
        Failed,  // Windows was asked to move it, and did not
        Refused, // see obstacle()
        LastCopy // it has become the last copy, and the user was not told
    };

    FindDuplicateRemovalThread(Step step, RemovalRequest request);

    // All after processFinish().
    Outcome outcome() const { return m_outcome; }
    platform::Removal obstacle() const { return m_obstacle; }
    Step step() const { return m_step; }
    const RemovalRequest &request() const { return m_request; }
    // Of the whole group, as it is now.
    std::vector<duplicates::MemberFacts> takeMembers() { return std::move(m_members); }

signals:
    void processFinish();

protected:
    void run() override;

private:
    Outcome checked();
    Outcome moved();

    const Step m_step;
    const RemovalRequest m_request;
    Outcome m_outcome = Outcome::Refused;
    platform::Removal m_obstacle = platform::Removal::Refused;
    std::vector<duplicates::MemberFacts> m_members;
};
