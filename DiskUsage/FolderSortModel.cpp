// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/FolderSortModel.h"

#include "DiskUsage/FolderModel.h"

#include <algorithm>

FolderSortModel::FolderSortModel(QObject *parent) : QSortFilterProxyModel(parent)
{
    setSortRole(Qt::EditRole);
}

void FolderSortModel::setFolderModel(FolderModel *model)
{
    m_folders = model;
    setSourceModel(model);
}

bool FolderSortModel::less(const FolderItem &left, const FolderItem &right, int column)
{
    const diskusage::Folder &a = left.folder();
    const diskusage::Folder &b = right.folder();
    switch (column) {
    case FolderModel::Name:
        return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
    case FolderModel::FileCount:
        return a.files < b.files;
    case FolderModel::FolderCount:
        return a.folders < b.folders;
    case FolderModel::SizeText:
    case FolderModel::Size:
    case FolderModel::Percentage: // all rows that are compared have the same parent
        return a.bytes < b.bytes;
    case FolderModel::Index:
        return a.index < b.index;
    default:
        return left.value(column).toString() < right.value(column).toString();
    }
}

std::vector<const FolderItem *> FolderSortModel::sortedChildren(const FolderItem &folder, int column,
                                                                Qt::SortOrder order)
{
    std::vector<const FolderItem *> children;
    for (int row = 0; row < folder.rowCount(); ++row)
        children.push_back(folder.childFolder(row));
    std::stable_sort(children.begin(), children.end(), [&](const FolderItem *a, const FolderItem *b) {
        return order == Qt::AscendingOrder ? less(*a, *b, column) : less(*b, *a, column);
    });
    return children;
}

bool FolderSortModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    return less(*m_folders->folderItem(left), *m_folders->folderItem(right), left.column());
}

bool FolderSortModel::filterAcceptsRow(int, const QModelIndex &) const
{
    return true;
}
