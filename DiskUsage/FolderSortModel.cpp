// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/FolderSortModel.h"

#include "DiskUsage/FolderModel.h"

#include <algorithm>

namespace
{

quint64 sortKey(const FolderItem &item, int column)
{
    const diskusage::Folder &folder = item.folder();
    switch (column) {
    case FolderModel::FileCount:
        return static_cast<quint64>(folder.files);
    case FolderModel::FolderCount:
        return static_cast<quint64>(folder.folders);
    case FolderModel::SizeText:
    case FolderModel::Size:
    case FolderModel::Percentage: // compared rows always have the same parent
        return folder.bytes;
    case FolderModel::Index:
        return static_cast<quint64>(folder.index);
    default:
        return static_cast<quint64>(item.nameRank());
    }
}

} // namespace

FolderSortModel::FolderSortModel(QObject *parent) : QAbstractProxyModel(parent) {}

void FolderSortModel::setFolderModel(FolderModel *model)
{
    beginResetModel();
    if (m_folders)
        disconnect(m_folders, nullptr, this, nullptr);
    m_folders = model;
    m_orders.clear();
    setSourceModel(model);
    if (model) {
        connect(model, &FolderModel::folderAboutToBeReplaced, this, &FolderSortModel::removeOld);
        connect(model, &FolderModel::folderReplaced, this, &FolderSortModel::showNew);
    }
    endResetModel();
}

std::vector<int> FolderSortModel::sortedRows(const FolderItem &folder, int column, Qt::SortOrder order)
{
    std::vector<std::pair<quint64, int>> keys;
    const int count = folder.rowCount();
    keys.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row) {
        const quint64 key = column < 0 ? 0 : sortKey(*folder.childFolder(row), column);
        keys.emplace_back(order == Qt::AscendingOrder ? key : ~key, row);
    }
    std::sort(keys.begin(), keys.end());
    std::vector<int> rows;
    rows.reserve(keys.size());
    for (const auto &[key, row] : keys)
        rows.push_back(row);
    return rows;
}

const FolderSortModel::Order &FolderSortModel::orderOf(const FolderItem *folder) const
{
    const auto known = m_orders.find(folder);
    if (known != m_orders.end())
        return known->second;
    Order &order = m_orders[folder];
    order.source = sortedRows(*folder, m_column, m_sortOrder);
    order.shown.resize(order.source.size());
    for (std::size_t row = 0; row < order.source.size(); ++row)
        order.shown[static_cast<std::size_t>(order.source[row])] = static_cast<int>(row);
    order.hasSubfolders.resize(order.source.size());
    for (int row = 0; const int shown : order.shown) // in memory order of the items
        order.hasSubfolders[static_cast<std::size_t>(shown)] = folder->childFolder(row++)->rowCount() > 0;
    return order;
}

FolderItem *FolderSortModel::folderAt(const QModelIndex &index) const
{
    if (!m_folders || !index.isValid())
        return nullptr;
    const auto *above = static_cast<const FolderItem *>(index.internalPointer());
    if (!above)
        return m_folders->rootFolder();
    return above->childFolder(orderOf(above).source[static_cast<std::size_t>(index.row())]);
}

QModelIndex FolderSortModel::indexOf(FolderItem *folder, int column) const
{
    FolderItem *above = folder->parentFolder();
    const int row = above ? orderOf(above).shown[static_cast<std::size_t>(folder->position())] : 0;
    return createIndex(row, column, above);
}

QModelIndex FolderSortModel::mapToSource(const QModelIndex &shown) const
{
    FolderItem *folder = folderAt(shown);
    return folder ? m_folders->indexOf(*folder, shown.column()) : QModelIndex();
}

QModelIndex FolderSortModel::mapFromSource(const QModelIndex &source) const
{
    FolderItem *folder = m_folders ? m_folders->folderItem(source) : nullptr;
    return folder ? indexOf(folder, source.column()) : QModelIndex();
}

QModelIndex FolderSortModel::index(int row, int column, const QModelIndex &parent) const
{
    if (row < 0 || column < 0 || column >= FolderModel::ColumnTotal || row >= rowCount(parent))
        return {};
    return createIndex(row, column, folderAt(parent));
}

QModelIndex FolderSortModel::parent(const QModelIndex &index) const
{
    auto *above = static_cast<FolderItem *>(index.internalPointer());
    return index.isValid() && above ? indexOf(above, 0) : QModelIndex();
}

int FolderSortModel::rowCount(const QModelIndex &parent) const
{
    if (!m_folders || parent.column() > 0)
        return 0;
    if (!parent.isValid())
        return m_folders->rootFolder() ? 1 : 0;
    const FolderItem *folder = folderAt(parent);
    return folder == m_emptied ? 0 : folder->rowCount();
}

int FolderSortModel::columnCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(FolderModel::ColumnTotal);
}

bool FolderSortModel::hasChildren(const QModelIndex &parent) const
{
    const auto *above = static_cast<const FolderItem *>(parent.internalPointer());
    if (!parent.isValid() || parent.column() > 0 || !above)
        return rowCount(parent) > 0;
    return orderOf(above).hasSubfolders[static_cast<std::size_t>(parent.row())] &&
           (!m_emptied || folderAt(parent) != m_emptied);
}

// The same flags as the folder model's, without mapping to the folder.
Qt::ItemFlags FolderSortModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

void FolderSortModel::sort(int column, Qt::SortOrder order)
{
    m_column = column;
    m_sortOrder = order;
    sortAgain();
}

void FolderSortModel::sortAgain()
{
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<FolderItem *> folders;
    for (const QModelIndex &index : before)
        folders.push_back(folderAt(index));
    m_orders.clear();
    QModelIndexList after;
    for (qsizetype i = 0; i < before.size(); ++i)
        after.append(indexOf(folders[static_cast<std::size_t>(i)], before.at(i).column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

// The folder's own row stays with its selection; the rows below it are replaced.
void FolderSortModel::removeOld(const FolderItem *folder)
{
    const QModelIndex parent = mapFromSource(m_folders->indexOf(*folder, 0));
    const int rows = rowCount(parent);
    if (rows > 0)
        beginRemoveRows(parent, 0, rows - 1);
    m_emptied = folder;
    // Orders are looked up by address, which another folder may reuse.
    std::erase_if(m_orders, [folder](const auto &entry) {
        for (const FolderItem *item = entry.first; item; item = item->parentFolder())
            if (item == folder)
                return true;
        return false;
    });
    if (rows > 0)
        endRemoveRows();
}

void FolderSortModel::showNew(FolderItem *folder)
{
    m_emptied = folder;
    const QModelIndex parent = indexOf(folder, 0);
    if (const auto above = m_orders.find(folder->parentFolder()); above != m_orders.end())
        above->second.hasSubfolders[static_cast<std::size_t>(parent.row())] = folder->rowCount() > 0;
    if (folder->rowCount() > 0)
        beginInsertRows(parent, 0, folder->rowCount() - 1);
    m_emptied = nullptr;
    if (folder->rowCount() > 0)
        endInsertRows();
    sortAgain(); // sizes have changed up to the root
}
