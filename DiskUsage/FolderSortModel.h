// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractProxyModel>

#include <unordered_map>
#include <vector>

class FolderItem;
class FolderModel;

// The display order of the folder tree. A folder's subfolders are sorted when it is first visited, by one
// number each, so that neither large trees nor folders with 100,000 subfolders cause a delay; a sorting proxy
// that compares pairs of values takes ten times as long.
class FolderSortModel : public QAbstractProxyModel
{
    Q_OBJECT

public:
    explicit FolderSortModel(QObject *parent = nullptr);

    // Null detaches the model.
    void setFolderModel(FolderModel *model);

    int sortColumn() const { return m_column; }
    Qt::SortOrder sortOrder() const { return m_sortOrder; }
    // The sorted rows of a folder; `column` is a FolderModel::Column. Stable: equal rows stay in scan order.
    // Any thread.
    static std::vector<int> sortedRows(const FolderItem &folder, int column, Qt::SortOrder order);

    QModelIndex mapToSource(const QModelIndex &shown) const override;
    QModelIndex mapFromSource(const QModelIndex &source) const override;
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    struct Order {
        std::vector<int> source; // displayed row -> row in the folder model
        std::vector<int> shown;  // the inverse
        // By displayed row. Cached, since a view asks for every row that it lays out, and the items are
        // scattered in memory.
        std::vector<bool> hasSubfolders;
    };

    // Indexes contain the parent folder of their row; null for the root.
    FolderItem *folderAt(const QModelIndex &index) const;
    QModelIndex indexOf(FolderItem *folder, int column) const;
    const Order &orderOf(const FolderItem *folder) const;
    void removeOld(const FolderItem *folder);
    void showNew(FolderItem *folder);
    void sortAgain();

    FolderModel *m_folders = nullptr;
    int m_column = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    mutable std::unordered_map<const FolderItem *, Order> m_orders;
    const FolderItem *m_emptied = nullptr; // its rows are being replaced
};
