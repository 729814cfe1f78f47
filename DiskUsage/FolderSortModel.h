// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSortFilterProxyModel>

#include <vector>

class FolderItem;
class FolderModel;

// The order in which the folder tree is shown. Compares the folders themselves instead of asking for values a
// column at a time, which keeps a folder with 100,000 subfolders sortable while the user waits.
class FolderSortModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit FolderSortModel(QObject *parent = nullptr);

    // Null takes the model away again.
    void setFolderModel(FolderModel *model);

    // Both of one folder; `column` is one of FolderModel::Column. Any thread.
    static bool less(const FolderItem &left, const FolderItem &right, int column);
    static std::vector<const FolderItem *> sortedChildren(const FolderItem &folder, int column,
                                                          Qt::SortOrder order);

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    FolderModel *m_folders = nullptr;
};
