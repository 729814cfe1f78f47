// SPDX-License-Identifier: GPL-3.0-or-later
// The results page: the removal of one member. Three steps: a look at the disk, the question, the move with
// another look right before it. Nothing else can be done on the page from the first to the last.
#include "FindDuplicate/FindDuplicateResultForm.h"

#include "FindDuplicate/GroupModel.h"
#include "FindDuplicate/MemberModel.h"
#include "platform/Dialogs.h"
#include "widgets/FLTreeView.h"

#include <QApplication>
#include <QPointer>
#include <QToolButton>

using Outcome = FindDuplicateRemovalThread::Outcome;
using Step = FindDuplicateRemovalThread::Step;
using platform::Removal;

namespace
{

QString reason(const QString &path, Removal obstacle)
{
    switch (obstacle) {
    case Removal::Changed:
        return FindDuplicateResultForm::tr("%1 was not moved: it has changed since the scan.").arg(path);
    case Removal::Vanished:
        return FindDuplicateResultForm::tr("%1 was not moved: it is no longer there.").arg(path);
    case Removal::ThroughLink:
        return FindDuplicateResultForm::tr(
                   "%1 was not moved: it is reached through a link, and lies in another place.")
            .arg(path);
    default:
        return FindDuplicateResultForm::tr("%1 was not moved: the recycle bin does not take it.").arg(path);
    }
}

} // namespace

std::optional<RemovalRequest> FindDuplicateResultForm::requestFor(const Selected &member) const
{
    if (record(member).checked)
        return std::nullopt;
    return RemovalRequest{m_root, member.group, member.member,
                          m_groups[static_cast<std::size_t>(member.group)],
                          m_memberModel->facts(member.member)};
}

void FindDuplicateResultForm::on_RecycleBinButton_clicked()
{
    const std::optional<Selected> member = selectedMember();
    if (!member || isBusy())
        return;
    std::optional<RemovalRequest> request = requestFor(*member);
    if (!request)
        return;
    // The group is not read anew under the question.
    m_readLater.stop();
    m_result.reset();
    m_stopRequested = false;
    emit showToolbarSignal(false);
    setEnabled(false);
    startRemoval(Step::Check, *std::move(request));
}

void FindDuplicateResultForm::startRemoval(Step step, RemovalRequest request)
{
    m_removal.reset(new FindDuplicateRemovalThread(step, std::move(request)));
    connect(m_removal.get(), &FindDuplicateRemovalThread::processFinish, this,
            &FindDuplicateResultForm::onRemovalFinish);
    m_removal->start();
}

void FindDuplicateResultForm::onRemovalFinish()
{
    const Outcome outcome = m_removal->outcome();
    const RemovalRequest request = m_removal->request();
    const QString path = request.file().fullPath();
    const Removal obstacle = m_removal->obstacle();
    std::vector<duplicates::MemberFacts> members = m_removal->takeMembers();
    m_removal.reset();
    if (stillShown(request))
        m_memberModel->setFacts(std::move(members));
    switch (outcome) {
    case Outcome::Ready:
        askForRemoval(request);
        return;
    case Outcome::Moved:
    case Outcome::Failed:
        markRemoved(request, outcome == Outcome::Moved);
        endRemoval();
        return;
    case Outcome::LastCopy:
        endRemoval(tr("%1 was not moved: it has become the last copy of this group. Ask again to move it all "
                      "the same.")
                       .arg(path));
        return;
    case Outcome::Refused:
        endRemoval(m_stopRequested ? QString() : reason(path, obstacle));
        return;
    }
}

// The box has no owner: window messages are handled while it is up, and anything may be gone afterwards.
void FindDuplicateResultForm::askForRemoval(RemovalRequest request)
{
    if (m_stopRequested) {
        endRemoval();
        return;
    }
    const QPointer<FindDuplicateResultForm> page(this);
    m_asking = true;
    const int answer = platform::dialogs().messageBox(
        tr("Are you sure you want to move ") + request.file().fullPath() + tr(" to the recycle bin?"),
        tr("Confirm to save changes"), platform::yesNoWarning);
    if (!page)
        return;
    m_asking = false;
    if (answer == platform::idYes && !m_stopRequested && stillShown(request))
        startRemoval(Step::Move, std::move(request));
    else
        endRemoval();
}

bool FindDuplicateResultForm::stillShown(const RemovalRequest &request) const
{
    const auto group = static_cast<std::size_t>(request.groupIndex);
    return m_memberModel->groupIndex() == request.groupIndex && group < m_groups.size() &&
           m_groups[group].members.size() == request.group.members.size() &&
           record({request.groupIndex, request.memberIndex}) == request.file();
}

// Also after a failure: the file was asked to go, and the row says on a second line what the disk says.
void FindDuplicateResultForm::markRemoved(const RemovalRequest &request, bool moved)
{
    duplicates::FileRecord &file = m_groups[static_cast<std::size_t>(request.groupIndex)]
                                       .members[static_cast<std::size_t>(request.memberIndex)];
    file.checked = true;
    file.moved = moved;
    m_memberModel->memberChanged(request.memberIndex);
    m_groupModel->groupChanged(request.groupIndex);
    m_statistics = duplicates::statisticsOf(m_groups);
    showSummary();
}

void FindDuplicateResultForm::endRemoval(const QString &notice)
{
    m_removal.reset();
    m_asking = false;
    setEnabled(true);
    enableTools();
    m_memberTree->setFocus();
    // Another group may have been waiting to be read.
    if (selectedGroup() != m_memberModel->groupIndex())
        m_readLater.start();
    if (!notice.isEmpty())
        showNotice(notice);
    emit showToolbarSignal(true);
}
