// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractProxyModel>

#include <unordered_map>
#include <vector>

class FolderItem;
class FolderModel;

// The order in which the folder tree is shown. A folder's subfolders are put in order when it is first looked
// into, by one number each, so that neither the size of the tree nor a folder with 100,000 subfolders makes
// the user wait; a sorting proxy that compares values a pair at a time takes ten times as long.
class FolderSortModel : public QAbstractProxyModel
{
    Q_OBJECT

public:
    explicit FolderSortModel(QObject *parent = nullptr);

    // Null takes the model away again.
    void setFolderModel(FolderModel *model);

    int sortColumn() const { return m_column; }
    Qt::SortOrder sortOrder() const { return m_sortOrder; }
    // A folder's rows in order; `column` is one of FolderModel::Column. Equal ones stay as the scan met them.
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
        std::vector<int> source; // shown row -> row of the folder model
        std::vector<int> shown;  // and back
        // By shown row. A view asks it of every row that it lays out, and the items lie all over the memory.
        std::vector<bool> hasSubfolders;
    };

    // An index holds the folder that its row lies in; null for the root's.
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
