// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/Members.h"
#include "core/WorkerThread.h"
#include "platform/GuardedRemoval.h"
#include "platform/InterruptibleCalls.h"

#include <optional>

namespace duplicates
{

// The member that the user wants to remove, as it was shown. A copy of everything, since the list may change
// or be destroyed while the user is asked.
struct RemovalRequest {
    QString root; // the scanned folder
    std::vector<FileRecord> members;
    std::size_t member = 0;
    // Facts of that member as the user saw them; default values if the disk had not answered yet.
    MemberFacts shown;
    GroupContents contents = {};
    // The user has seen the notice that it is the last copy, and requested the removal again.
    bool lastCopyNoticeShown = false;

    const FileRecord &file() const { return members[member]; }
};

// Checks a group before the user is asked, and, after a Yes, checks it again and moves one member to the
// recycle bin. Disk and shell may be slow in each step.
class RemovalThread : public core::WorkerThread
{
    Q_OBJECT

public:
    enum class Step { Check, Move };
    enum class Outcome {
        Ready,    // checked: there is no obstacle
        Moved,    // to the recycle bin
        Untraced, // it is gone from its location, but Windows did not report the new one
        Failed,   // Windows could not move it
        Refused,  // see obstacle()
        Stopped,  // before anything was changed
        LastCopy, // it is the last copy, and the notice has not been shown
        NoMemory
    };

    RemovalThread(Step step, RemovalRequest request);

    // All valid after processFinish().
    Outcome outcome() const { return m_outcome; }
    platform::Guarded obstacle() const { return m_obstacle; }
    // After a check: contains the file's identity if available, so that no other file is moved.
    RemovalRequest takeRequest() { return std::move(m_request); }
    // Current facts of the whole group; empty unless the outcome is LastCopy, or if they could not be read.
    std::vector<MemberFacts> takeMembers() { return std::move(m_members); }

signals:
    void processFinish(); // on the thread that this object lives in

protected:
    void work() override;
    void interrupt() override { m_calls.interrupt(); }

private:
    Outcome checked();
    Outcome moved();
    platform::ShownItem shownItem() const;

    platform::InterruptibleCalls m_calls; // cancels a check; a move that has started is completed
    const Step m_step;
    RemovalRequest m_request;
    Outcome m_outcome = Outcome::NoMemory; // until another outcome is set
    platform::Guarded m_obstacle = platform::Guarded::Refused;
    std::vector<MemberFacts> m_members;
};

} // namespace duplicates
