// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateRemovalThread.h"

using platform::Removal;

FindDuplicateRemovalThread::FindDuplicateRemovalThread(Step step, RemovalRequest request)
    : m_step(step),
      m_request(std::move(request))
{
}

void FindDuplicateRemovalThread::run()
{
    // A removal is not broken off half way: the flag ends what comes before it.
    m_members = duplicates::readMembers(m_request.root, m_request.group, cancelFlag());
    if (!stopRequested())
        m_outcome = checked();
    if (m_outcome == Outcome::Ready && m_step == Step::Move)
        m_outcome = moved();
    deliver([this] { emit processFinish(); });
}

FindDuplicateRemovalThread::Outcome FindDuplicateRemovalThread::checked()
{
    const duplicates::MemberFacts &now = m_members[static_cast<std::size_t>(m_request.memberIndex)];
    if (now.mark.lastCopy && !m_request.shown.mark.lastCopy)
        return Outcome::LastCopy;
    const std::optional<Removal> obstacle =
        platform::removalObstacle(duplicates::shownFile(m_request.root, m_request.file(), m_request.shown));
    m_obstacle = obstacle.value_or(Removal::Refused);
    return obstacle ? Outcome::Refused : Outcome::Ready;
}

FindDuplicateRemovalThread::Outcome FindDuplicateRemovalThread::moved()
{
    m_obstacle =
        platform::moveShownFile(duplicates::shownFile(m_request.root, m_request.file(), m_request.shown));
    const core::CancelFlag never;
    m_members = duplicates::readMembers(m_request.root, m_request.group, never);
    switch (m_obstacle) {
    case Removal::Moved:
        return Outcome::Moved;
    case Removal::Failed:
        return Outcome::Failed;
    default:
        return Outcome::Refused;
    }
}
