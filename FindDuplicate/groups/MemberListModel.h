// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/Members.h"

#include <QAbstractTableModel>

#include <optional>
#include <vector>

namespace duplicates
{

// The members of one group, one row each, in group order, with facts from the disk. Subclasses provide the
// content of a row.
class MemberListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    int groupIndex() const { return m_groupIndex; } // -1 for none
    // Sets new facts, one entry per member; the rows are kept.
    void setFacts(std::vector<MemberFacts> facts);
    // Marks a file that is known to be missing.
    void setGone(int member);
    // The members' records have changed.
    void membersChanged();

    // Empty until the disk has answered, otherwise one entry per member.
    const std::vector<MemberFacts> &allFacts() const { return m_facts; }
    // nullopt until known.
    std::optional<MemberFacts> facts(int member) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;

protected:
    // Switches to another group, or to none (-1): `exchange` replaces the members. Their facts are cleared.
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
    // Called when the suggested member must be determined again.
    virtual void updateProposal() = 0;

private:
    int m_groupIndex = -1;
    std::vector<MemberFacts> m_facts;
};

} // namespace duplicates
