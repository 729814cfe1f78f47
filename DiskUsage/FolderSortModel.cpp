// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/FolderSortModel.h"

#include "DiskUsage/FolderModel.h"

FolderSortModel::FolderSortModel(QObject *parent) : QSortFilterProxyModel(parent)
{
    setSortRole(Qt::EditRole);
}

void FolderSortModel::setFolderModel(FolderModel *model)
{
    m_folders = model;
    setSourceModel(model);
}

bool FolderSortModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    const FolderItem &first = *m_folders->folderItem(left);
    const FolderItem &second = *m_folders->folderItem(right);
    const diskusage::Folder &a = first.folder();
    const diskusage::Folder &b = second.folder();
    switch (left.column()) {
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
        return first.value(left.column()).toString() < second.value(left.column()).toString();
    }
}

bool FolderSortModel::filterAcceptsRow(int, const QModelIndex &) const
{
    return true;
}
