// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/FileIcons.h"
#include "FindDuplicate/engine/FileRecord.h"

#include <QAbstractTableModel>
#include <QList>

#include <vector>

// The list of groups, one row each. Texts and icons are made when a row is painted, so that a list of any
// length opens at once.
class GroupModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    // The helper columns are hidden.
    enum Column { Text, GroupIndex, MemberIndex, ColumnTotal };

    using QAbstractTableModel::QAbstractTableModel;

    // The groups belong to the caller and stay as long as they are shown.
    // `listed` are their indexes in the order of the rows.
    void setGroups(const std::vector<duplicates::DuplicateGroup> *groups, std::vector<int> listed);
    void setListed(std::vector<int> groups);
    // From group `first` on, whether their first files are there.
    void setFirstFilesExist(int first, const QList<bool> &exist);
    // A member of the group was marked as removed.
    void groupChanged(int group);

    int groupAt(int row) const; // -1 for no row
    int rowOf(int group) const; // -1 when it is not listed

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QVariant textData(const duplicates::DuplicateGroup &group, bool exists, int role) const;

    const std::vector<duplicates::DuplicateGroup> *m_groups = nullptr;
    std::vector<bool> m_firstFileExists; // by group, as far as it was looked at
    std::vector<int> m_listed;
    std::vector<int> m_rowOf; // by group
    mutable FileIcons m_icons;
};
