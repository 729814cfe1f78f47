// SPDX-License-Identifier: GPL-3.0-or-later
// The results page: the removal of one member. Nothing else can be done on the page until it has ended.
#include "FindDuplicate/FindDuplicateResultForm.h"

#include "FindDuplicate/GroupModel.h"
#include "FindDuplicate/MemberModel.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"

#include <QSplitter>
#include <QToolBar>

#include <utility>

using duplicates::RemovalRequest;
using duplicates::RemovalResult;

// The notice stays usable: it is where a look at the disk that takes long is told, and can be given up.
void FindDuplicateResultForm::setUsable(bool usable)
{
    m_toolBar->setEnabled(usable);
    m_splitter->setEnabled(usable);
}

void FindDuplicateResultForm::showLooking()
{
    showNotice(tr("Looking at the file ..."), false, m_cancelLook);
}

void FindDuplicateResultForm::on_RecycleBinButton_clicked()
{
    const std::optional<Selected> member = removableMember();
    if (!member || isBusy())
        return;
    // The group is not changed under the question. What was to come comes when it has ended.
    m_searchWaits = m_searchLater.isActive();
    m_searchLater.stop();
    m_readLater.stop();
    m_reading.forget();
    m_notice->hide();
    m_jobs.begin({.busyText = tr("the removal of a file")}, [this] { m_removal->requestStop(); });
    setUsable(false);
    m_removed = *member;
    RemovalRequest request{m_root, groupAt(member->group).members, static_cast<std::size_t>(member->member),
                           m_memberModel->facts(member->member).value_or(duplicates::MemberFacts()),
                           m_memberModel->contents()};
    const duplicates::FileRecord shown = request.file();
    m_removal->start(std::move(request), [this, shown] {
        return m_memberModel->groupIndex() == m_removed.group && record(m_removed) == shown;
    });
}

void FindDuplicateResultForm::afterRemoval(const RemovalResult &result)
{
    if (!result.notice.isEmpty())
        m_jobs.keepOpen();
    m_jobs.end();
    if (m_memberModel->groupIndex() == m_removed.group) {
        if (result.outcome == RemovalResult::Outcome::Moved)
            m_memberModel->setGone(m_removed.member);
        if (!result.members.empty())
            showFacts(result.members);
    }
    if (result.outcome != RemovalResult::Outcome::LeftAlone)
        markRemoved(result.outcome == RemovalResult::Outcome::Moved);
    setUsable(true);
    enableTools();
    m_memberTree->setFocus();
    if (result.members.empty() || m_memberModel->groupIndex() != m_removed.group)
        m_readLater.start();
    if (std::exchange(m_searchWaits, false))
        m_searchLater.start();
    // That the move failed is told by the row.
    if (result.outcome == RemovalResult::Outcome::Moved)
        showNotice(tr("%1 was moved to the recycle bin.").arg(record(m_removed).fullPath()), false,
                   m_openBin);
    else if (result.outcome != RemovalResult::Outcome::Failed && !result.notice.isEmpty())
        showNotice(result.notice);
}

// Also after a failure: the file was asked to go, and the row says on its last line what the disk says.
void FindDuplicateResultForm::markRemoved(bool moved)
{
    duplicates::FileRecord &file =
        groupAt(m_removed.group).members[static_cast<std::size_t>(m_removed.member)];
    file.checked = true;
    file.moved = moved;
    if (m_memberModel->groupIndex() == m_removed.group)
        m_memberModel->membersChanged();
    if (moved && m_removed.member == 0)
        m_groupModel->setFirstFilesExist(m_removed.group, {false});
    m_groupModel->groupChanged(m_removed.group);
    showGroupTitle();
    m_statistics = duplicates::statisticsOf(*m_groups);
    m_spareBytes.remove(m_removed.group);
    noteSpareBytes();
    showSummary();
}
