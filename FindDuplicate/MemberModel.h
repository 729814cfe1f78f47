// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/ContentComparison.h"
#include "FindDuplicate/engine/FileRecord.h"
#include "FindDuplicate/groups/MemberListModel.h"
#include "widgets/FileRowDelegate.h"

#include <optional>
#include <vector>

namespace duplicates
{

// The members of one group of duplicates.
class MemberModel : public MemberListModel
{
    Q_OBJECT

public:
    // The helper columns are hidden. State is "1" for a member that was removed.
    enum Column { Text, State, GroupIndex, MemberIndex, Path, ColumnTotal };

    using MemberListModel::MemberListModel;

    // The caller owns the group, which must stay valid while it is shown; null shows none. Clears all facts
    // about its members.
    void setGroup(const DuplicateGroup *group, int groupIndex);
    // One per member, or empty if not compared.
    void setContents(std::vector<ContentState> contents);
    const GroupContents &contents() const { return m_contents; }

    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

protected:
    int memberCount() const override { return static_cast<int>(m_group->members.size()); }
    void updateProposal() override;

private:
    QVariant textData(int member, int role) const;
    bool isMissing(int member) const;
    QString toolTip(int member) const;
    QString wholeText(const FileRecord &file) const;
    QList<RowBadge> badges(int member) const;
    void appendDiskBadges(QList<RowBadge> &badges, int member) const;
    RowBadge sameFileBadge(const MemberFacts &known) const;
    RowBadge contentBadge(ContentState state) const;

    const DuplicateGroup *m_group = nullptr;
    std::vector<ContentState> m_contents;
    std::optional<std::size_t> m_proposed; // suggested to be kept
};

} // namespace duplicates
