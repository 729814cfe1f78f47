// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/Members.h"

#include <QAbstractTableModel>

#include <optional>
#include <vector>

namespace duplicates
{

// The members of one group, one row each, in the group's order, with what the disk says about them. A
// subclass says what a row shows.
class MemberListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    int groupIndex() const { return m_groupIndex; } // -1 for none
    // What the disk says about the members now, an entry each; the rows stay.
    void setFacts(std::vector<MemberFacts> facts);
    // The file is known to have gone.
    void setGone(int member);
    // What the records of the members say has changed.
    void membersChanged();

    // Empty until the disk has answered, or one a member.
    const std::vector<MemberFacts> &allFacts() const { return m_facts; }
    // Empty until it is known.
    std::optional<MemberFacts> facts(int member) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;

protected:
    // Another group, or -1: `exchange` puts its members in place; nothing is known about them yet.
    template <class Exchange>
    void resetTo(int group, Exchange exchange)
    {
        beginResetModel();
        m_groupIndex = group;
        m_facts.clear();
        exchange();
        endResetModel();
    }
    std::vector<MemberFacts> &knownFacts() { return m_facts; }

    virtual int memberCount() const = 0; // of the group
    // Which member is to be proposed has to be found out again.
    virtual void updateProposal() = 0;

private:
    int m_groupIndex = -1;
    std::vector<MemberFacts> m_facts;
};

} // namespace duplicates
