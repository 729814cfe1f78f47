// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <QList>

#include <vector>

namespace duplicates
{

// The listed groups of a result, one row each, and which of them have lost their first file. A subclass says
// what a row shows, when it is painted, so that a list of any length opens at once.
class GroupListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    // The indexes of the groups that are listed, in the order of the rows.
    void setListed(std::vector<int> groups);
    // From group `first` on, whether their first files are there.
    void setFirstFilesExist(int first, const QList<bool> &exist);
    bool firstFileExists(int group) const { return m_firstFileExists[static_cast<std::size_t>(group)]; }
    // Something about the members of the group has changed.
    void groupChanged(int group);

    int groupAt(int row) const; // -1 for no row
    int rowOf(int group) const; // -1 when it is not listed

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;

protected:
    // That many groups, all of them listed, and their first files there as far as is known.
    void reset(int groups);

private:
    std::vector<bool> m_firstFileExists; // by group
    std::vector<int> m_listed;
    std::vector<int> m_rowOf; // by group
};

} // namespace duplicates
