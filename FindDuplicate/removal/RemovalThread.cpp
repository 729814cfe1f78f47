// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/removal/RemovalThread.h"

#include "platform/FileProbe.h"

using platform::Guarded;

namespace duplicates
{

RemovalThread::RemovalThread(Step step, RemovalRequest request) : m_step(step), m_request(std::move(request))
{
    connect(this, &WorkerThread::done, this, &RemovalThread::processFinish);
}

void RemovalThread::work()
{
    std::optional<platform::InterruptibleCalls::Call> call;
    if (m_step == Step::Check)
        call.emplace(m_calls);
    Outcome outcome = checked();
    if (outcome == Outcome::Ready && m_step == Step::Move)
        outcome = moved();
    m_outcome = outcome;
    // Only needed for the notice. In other cases the page reads the group again in the background.
    if (outcome != Outcome::LastCopy)
        return;
    m_members = readMembers(m_request.root, m_request.members, platform::fileProbe(), cancelFlag(),
                            m_request.contents);
    if (stopRequested())
        m_members.clear(); // it may be incomplete
}

RemovalThread::Outcome RemovalThread::checked()
{
    const MemberFacts now = readMember(m_request.root, m_request.members, m_request.member,
                                       platform::fileProbe(), cancelFlag(), m_request.contents);
    if (stopRequested())
        return Outcome::Stopped;
    // If the list had no identity yet, the question is about the file that exists now.
    if (!m_request.shown.identity)
        m_request.shown.identity = now.identity;
    if (const std::optional<Guarded> obstacle = platform::removalObstacle(shownItem())) {
        m_obstacle = *obstacle;
        return Outcome::Refused;
    }
    return now.mark.lastCopy && !m_request.lastCopyNoticeShown ? Outcome::LastCopy : Outcome::Ready;
}

RemovalThread::Outcome RemovalThread::moved()
{
    if (stopRequested())
        return Outcome::Stopped;
    m_obstacle = platform::moveShownItem(shownItem());
    switch (m_obstacle) {
    case Guarded::Done:
        return Outcome::Moved;
    case Guarded::Untraced:
        return Outcome::Untraced;
    case Guarded::Failed:
        return Outcome::Failed;
    default:
        return Outcome::Refused;
    }
}

platform::ShownItem RemovalThread::shownItem() const
{
    const FileRecord &file = m_request.file();
    return {m_request.root, file.fullPath(), file.size, file.lastWriteTime, m_request.shown.identity};
}

} // namespace duplicates
