// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/groups/GroupListModel.h"

#include <numeric>
#include <utility>

namespace duplicates
{

void GroupListModel::reset(int groups)
{
    m_firstFileExists.assign(static_cast<std::size_t>(groups), true);
    std::vector<int> all(m_firstFileExists.size());
    std::iota(all.begin(), all.end(), 0);
    setListed(std::move(all));
}

void GroupListModel::setListed(std::vector<int> groups)
{
    beginResetModel();
    m_listed = std::move(groups);
    m_rowOf.assign(m_firstFileExists.size(), -1);
    for (std::size_t row = 0; row < m_listed.size(); ++row)
        m_rowOf[static_cast<std::size_t>(m_listed[row])] = static_cast<int>(row);
    endResetModel();
}

void GroupListModel::setFirstFilesExist(int first, const QList<bool> &exist)
{
    for (int i = 0; i < exist.size(); ++i) {
        const auto group = static_cast<std::size_t>(first + i);
        if (group >= m_firstFileExists.size() || m_firstFileExists[group] == exist[i])
            continue;
        m_firstFileExists[group] = exist[i];
        groupChanged(first + i);
    }
}

void GroupListModel::groupChanged(int group)
{
    const int row = rowOf(group);
    if (row >= 0)
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

int GroupListModel::groupAt(int row) const
{
    return row >= 0 && row < rowCount() ? m_listed[static_cast<std::size_t>(row)] : -1;
}

int GroupListModel::rowOf(int group) const
{
    const auto at = static_cast<std::size_t>(group);
    return group >= 0 && at < m_rowOf.size() ? m_rowOf[at] : -1;
}

int GroupListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_listed.size());
}

int GroupListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 1;
}

} // namespace duplicates
