// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/removal/MemberRemoval.h"

#include "platform/Dialogs.h"

#include <QPointer>

#include <utility>

namespace duplicates
{

using platform::Guarded;
using Outcome = RemovalThread::Outcome;
using Step = RemovalThread::Step;

namespace
{

constexpr int patience = 300; // ms until the first check is reported as slow

QString obstacleText(Guarded obstacle)
{
    switch (obstacle) {
    case Guarded::Changed:
        return MemberRemoval::tr("%1 was not moved: it has changed since the scan.");
    case Guarded::Vanished:
        return MemberRemoval::tr("%1 was not moved: it is no longer there.");
    case Guarded::ThroughLink:
        return MemberRemoval::tr(
            "%1 was not moved: it is reached through a link, and lies in another place.");
    case Guarded::InCloud:
        return MemberRemoval::tr("%1 was not moved: it lies in a cloud store only, and would have to be "
                                 "fetched from there first.");
    default:
        return MemberRemoval::tr("%1 was not moved: the recycle bin does not take it.");
    }
}

// Empty if there is nothing to report.
QString noticeText(Outcome outcome, Guarded obstacle)
{
    switch (outcome) {
    case Outcome::Refused:
        return obstacleText(obstacle);
    case Outcome::LastCopy:
        return MemberRemoval::tr(
            "%1 was not moved: it is the last copy of this group, as far as can be told. Ask "
            "again to move it all the same.");
    case Outcome::Untraced:
        return MemberRemoval::tr(
            "%1 is gone from its place, but Windows did not tell where it went. Look for it "
            "in the recycle bin before you remove more.");
    case Outcome::Failed:
        return MemberRemoval::tr("Windows did not move %1 to the recycle bin. It may be in use, or its drive "
                                 "has no recycle bin.");
    case Outcome::NoMemory:
        return MemberRemoval::tr("%1 was not moved: there is not enough memory to look at its group.");
    default:
        return {};
    }
}

// Not arg(), since the path may contain "%1".
QString about(QString text, const QString &path)
{
    return text.replace(QLatin1String("%1"), path);
}

RemovalResult::Outcome resultOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Moved:
        return RemovalResult::Outcome::Moved;
    case Outcome::Untraced:
        return RemovalResult::Outcome::Untraced;
    case Outcome::Failed:
        return RemovalResult::Outcome::Failed;
    default:
        return RemovalResult::Outcome::LeftAlone;
    }
}

} // namespace

MemberRemoval::MemberRemoval(QObject *parent) : QObject(parent)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        m_slowReported = true;
        emit checkTakesLong();
    });
}

MemberRemoval::~MemberRemoval() = default;

void MemberRemoval::start(RemovalRequest request, std::function<bool()> stillShown)
{
    if (isRunning())
        return;
    m_stillShown = std::move(stillShown);
    m_stopRequested = false;
    // Only if the notice of the last copy was the last result, and for the same file.
    request.lastCopyNoticeShown = std::exchange(m_lastCopyNoticePath, {}) == request.file().fullPath();
    startThread(Step::Check, std::move(request));
    m_patience.start();
}

void MemberRemoval::requestStop()
{
    if (m_check) {
        m_check.reset();
        endPatience();
        finish();
        return;
    }
    m_stopRequested = isRunning();
    if (m_move)
        m_move->requestStop();
}

void MemberRemoval::startThread(Step step, RemovalRequest request)
{
    auto *thread = new RemovalThread(step, std::move(request));
    if (step == Step::Check)
        m_check.reset(thread);
    else
        m_move.reset(thread);
    connect(thread, &RemovalThread::processFinish, this, &MemberRemoval::onProcessFinish);
    thread->start();
}

void MemberRemoval::onProcessFinish()
{
    RemovalThread &thread = m_check ? *m_check : *m_move;
    const Outcome outcome = thread.outcome();
    RemovalRequest request = thread.takeRequest();
    const Guarded obstacle = thread.obstacle();
    std::vector<MemberFacts> members = thread.takeMembers();
    m_check.reset();
    m_move.reset();
    endPatience();
    if (outcome == Outcome::LastCopy)
        m_lastCopyNoticePath = request.file().fullPath();
    if (outcome == Outcome::Ready)
        ask(std::move(request));
    else
        finish({resultOf(outcome), about(noticeText(outcome, obstacle), request.file().fullPath()),
                std::move(members)});
}

void MemberRemoval::endPatience()
{
    m_patience.stop();
    if (std::exchange(m_slowReported, false))
        emit checkEnded();
}

// The message box has no owner and processes window messages, so anything may have been destroyed afterwards.
void MemberRemoval::ask(RemovalRequest request)
{
    if (m_stopRequested) {
        finish();
        return;
    }
    const QString path = request.file().fullPath();
    const QPointer<MemberRemoval> self(this);
    m_asking = true;
    const int answer = platform::dialogs().messageBox(tr("Are you sure you want to move ") + path +
                                                          tr(" to the recycle bin?"),
                                                      tr("Confirm to save changes"), platform::yesNoWarning);
    if (!self)
        return;
    m_asking = false;
    if (answer != platform::idYes || m_stopRequested)
        finish();
    else if (m_stillShown())
        startThread(Step::Move, std::move(request));
    else
        finish({RemovalResult::Outcome::LeftAlone,
                about(tr("%1 was not moved: it is no longer the file that the list shows."), path),
                {}});
}

void MemberRemoval::finish(RemovalResult result)
{
    m_stillShown = {};
    emit finished(result);
}

} // namespace duplicates
