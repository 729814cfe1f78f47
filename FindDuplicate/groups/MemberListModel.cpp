// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/groups/MemberListModel.h"

#include <utility>

namespace duplicates
{

void MemberListModel::setFacts(std::vector<MemberFacts> facts)
{
    if (facts.size() != static_cast<std::size_t>(rowCount()))
        return;
    m_facts = std::move(facts);
    membersChanged();
}

void MemberListModel::setGone(int member)
{
    if (m_facts.empty())
        return;
    m_facts[static_cast<std::size_t>(member)] = {};
    membersChanged();
}

void MemberListModel::membersChanged()
{
    if (rowCount() == 0)
        return;
    updateProposal();
    emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

std::optional<MemberFacts> MemberListModel::facts(int member) const
{
    const auto at = static_cast<std::size_t>(member);
    return member >= 0 && at < m_facts.size() ? std::optional(m_facts[at]) : std::nullopt;
}

int MemberListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || m_groupIndex < 0 ? 0 : memberCount();
}

int MemberListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 1;
}

} // namespace duplicates
