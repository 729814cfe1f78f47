// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/FileIcons.h"
#include "FindDuplicate/engine/ContentComparison.h"
#include "FindDuplicate/engine/FileRecord.h"
#include "FindDuplicate/engine/Members.h"
#include "widgets/FileRowDelegate.h"

#include <QAbstractTableModel>

#include <optional>
#include <vector>

// The members of one group, one row each, in the group's order, with what is known about them.
class MemberModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    // The helper columns are hidden. State is "1" for a member that was removed.
    enum Column { Text, State, GroupIndex, MemberIndex, Path, ColumnTotal };

    using QAbstractTableModel::QAbstractTableModel;

    // The group belongs to the caller and stays as long as it is shown; null shows none. Nothing is known
    // about its members yet.
    void setGroup(const duplicates::DuplicateGroup *group, int groupIndex);
    // What the disk says about the members now, an entry each; the rows stay.
    void setFacts(std::vector<duplicates::MemberFacts> facts);
    // One a member, or none: not compared.
    void setContents(std::vector<duplicates::ContentState> contents);
    // The file is known to have gone.
    void setGone(int member);
    // What the records of the members say has changed.
    void membersChanged();

    int groupIndex() const { return m_groupIndex; }
    const duplicates::GroupContents &contents() const { return m_contents; }
    // Empty until the disk has answered.
    const std::vector<duplicates::MemberFacts> &allFacts() const { return m_facts; }
    // Empty until it is known.
    std::optional<duplicates::MemberFacts> facts(int member) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QVariant textData(int member, int role) const;
    bool isMissing(int member) const;
    QString toolTip(int member) const;
    QString wholeText(const duplicates::FileRecord &file) const;
    QList<RowBadge> badges(int member) const;
    void appendDiskBadges(QList<RowBadge> &badges, int member) const;
    RowBadge sameFileBadge(const duplicates::MemberFacts &known) const;
    RowBadge contentBadge(duplicates::ContentState state) const;

    const duplicates::DuplicateGroup *m_group = nullptr;
    int m_groupIndex = -1;
    std::vector<duplicates::MemberFacts> m_facts; // none, or one a member
    std::vector<duplicates::ContentState> m_contents;
    std::optional<std::size_t> m_proposed; // to be kept
    mutable FileIcons m_icons;
};
