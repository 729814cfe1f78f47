// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/FileRecord.h"
#include "FindDuplicate/groups/GroupListModel.h"

#include <vector>

namespace duplicates
{

// The list of groups. Texts and icons are created when a row is painted.
class GroupModel : public GroupListModel
{
    Q_OBJECT

public:
    // The helper columns are hidden.
    enum Column { Text, GroupIndex, MemberIndex, ColumnTotal };

    using GroupListModel::GroupListModel;

    // The caller owns the groups, which must stay valid while they are shown. Lists all of them.
    void setGroups(const std::vector<DuplicateGroup> *groups);

    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QVariant textData(const DuplicateGroup &group, bool exists, int role) const;

    const std::vector<DuplicateGroup> *m_groups = nullptr;
};

} // namespace duplicates
