// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/Members.h"
#include "core/WorkerThread.h"
#include "platform/GuardedRemoval.h"
#include "platform/InterruptibleCalls.h"

#include <optional>

namespace duplicates
{

// What was shown of the member that the user wants removed. A copy of everything, for the list may change or
// go while the user is being asked.
struct RemovalRequest {
    QString root; // the folder that was scanned
    std::vector<FileRecord> members;
    std::size_t member = 0;
    // Of that member, as the user saw it; as it is by default when the disk had not answered yet.
    MemberFacts shown;
    GroupContents contents = {};
    // The user was told in words that it is the last copy, and asked again all the same.
    bool toldLastCopy = false;

    const FileRecord &file() const { return members[member]; }
};

// Looks at a group once more before the user is asked, and again, and moves one member to the recycle bin,
// after a Yes. Disk and shell may take their time for each.
class RemovalThread : public core::WorkerThread
{
    Q_OBJECT

public:
    enum class Step { Check, Move };
    enum class Outcome {
        Ready,    // checked: nothing stands in the way
        Moved,    // to the recycle bin
        Untraced, // it is gone from its place, and Windows did not tell where to
        Failed,   // Windows was asked to move it, and did not
        Refused,  // see obstacle()
        Stopped,  // before anything was done
        LastCopy, // it is the last copy, and the user was not told in words
        NoMemory
    };

    RemovalThread(Step step, RemovalRequest request);

    // All after processFinish().
    Outcome outcome() const { return m_outcome; }
    platform::Guarded obstacle() const { return m_obstacle; }
    // After a check: the file's identity is known where the disk tells it, so that nothing else is moved.
    RemovalRequest takeRequest() { return std::move(m_request); }
    // Of the whole group, as it is now; empty but for a LastCopy, and when they could not be read.
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

    platform::InterruptibleCalls m_calls; // of a check: a move that has begun ends as it does
    const Step m_step;
    RemovalRequest m_request;
    Outcome m_outcome = Outcome::NoMemory; // until there is another one
    platform::Guarded m_obstacle = platform::Guarded::Refused;
    std::vector<MemberFacts> m_members;
};

} // namespace duplicates
