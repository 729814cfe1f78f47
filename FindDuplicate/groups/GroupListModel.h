// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <QList>

#include <vector>

namespace duplicates
{

// The listed groups of a result, one row each, and which of them have lost their first file. Subclasses
// provide the content of a row when it is painted, so that lists of any length open at once.
class GroupListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    // The indexes of the listed groups, in row order.
    void setListed(std::vector<int> groups);
    // Sets whether the first files exist, from group `first` on.
    void setFirstFilesExist(int first, const QList<bool> &exist);
    bool firstFileExists(int group) const { return m_firstFileExists[static_cast<std::size_t>(group)]; }
    // Something about the group's members has changed.
    void groupChanged(int group);

    int groupAt(int row) const; // -1 for no row
    int rowOf(int group) const; // -1 if it is not listed

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;

protected:
    // Lists all `groups` groups; their first files are assumed to exist.
    void reset(int groups);

private:
    std::vector<bool> m_firstFileExists; // by group
    std::vector<int> m_listed;
    std::vector<int> m_rowOf; // by group
};

} // namespace duplicates
