// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/ItemReader.h"
#include "SecureDelete/RowsModel.h"

#include <QSet>

namespace securedelete
{

// Totals of all rows.
struct ItemTotals {
    quint64 files = 0;
    quint64 bytes = 0;
    int links = 0;
    bool counted = true;     // all folders have been counted
    Remarks remarks;         // union of all rows' remarks
    bool solidState = false; // at least one row is on a solid-state drive
};

// The files and folders to destroy, each once, in the order in which they were added.
class ItemModel : public RowsModel
{
    Q_OBJECT

public:
    enum Column { Name, Folder, Kind, Size, Files, Notes, ColumnCount };

    using RowsModel::RowsModel;

    // Skips what is already listed or lies inside a listed folder, and returns how many were skipped. A new
    // folder replaces rows that lie inside it.
    int add(const std::vector<ListRow> &rows);
    void setCounts(const std::vector<FolderCount> &counts);
    void removeIds(const QList<int> &ids);
    void clear();

    const std::vector<ListRow> &rows() const { return m_rows; }
    ItemTotals totals() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

    static QString remarksText(Remarks remarks);

private:
    using Rows = std::vector<ListRow>;

    bool isCovered(const QString &key, const QSet<QString> &comingFolders) const;
    void forget(Rows::const_iterator first, Rows::const_iterator last);
    QString text(const ListRow &row, int column) const;

    Rows m_rows;
    QSet<QString> m_known;   // paths of all rows, in lower case
    QSet<QString> m_folders; // lower-case paths of folders that are destroyed with all their contents
};

} // namespace securedelete
