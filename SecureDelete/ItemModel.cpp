// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/ItemModel.h"

#include "core/SizeText.h"
#include "widgets/Controls.h"

#include <QHash>

#include <algorithm>
#include <utility>

namespace securedelete
{

namespace
{

// Equal for two spellings of the same path.
QString keyOf(const ListRow &row)
{
    return row.row.item.path().toLower();
}

bool isWholeFolder(const ListRow &row)
{
    return !row.row.isFile && !row.row.item.isLink();
}

} // namespace

// True if the path lies below a folder of the list, or below one that is being added.
bool ItemModel::isCovered(const QString &key, const QSet<QString> &comingFolders) const
{
    for (qsizetype cut = key.lastIndexOf(u'\\'); cut > 0; cut = key.lastIndexOf(u'\\', cut - 1)) {
        const QString folder = key.left(cut);
        if (m_folders.contains(folder) || comingFolders.contains(folder))
            return true;
    }
    return false;
}

int ItemModel::add(const std::vector<ListRow> &rows)
{
    QSet<QString> folders;
    for (const ListRow &row : rows) {
        if (isWholeFolder(row))
            folders.insert(keyOf(row));
    }
    std::vector<ListRow> added;
    for (const ListRow &row : rows) {
        const QString key = keyOf(row);
        if (m_known.contains(key) || isCovered(key, folders))
            continue;
        m_known.insert(key);
        added.push_back(row);
    }
    QList<int> covered;
    for (const ListRow &row : m_rows) {
        if (!folders.isEmpty() && isCovered(keyOf(row), folders))
            covered.append(row.id);
    }
    removeIds(covered);
    if (!added.empty()) {
        const int first = rowCount();
        beginInsertRows({}, first, first + static_cast<int>(added.size()) - 1);
        m_rows.insert(m_rows.end(), added.begin(), added.end());
        for (const ListRow &row : added) {
            if (isWholeFolder(row))
                m_folders.insert(keyOf(row));
        }
        endInsertRows();
    }
    return static_cast<int>(rows.size() - added.size());
}

void ItemModel::setCounts(const std::vector<FolderCount> &counts)
{
    QHash<int, const FolderCount *> byId;
    for (const FolderCount &count : counts)
        byId.insert(count.id, &count);
    int first = rowCount();
    int last = -1;
    for (int row = 0; row < rowCount(); ++row) {
        ListRow &counted = m_rows[static_cast<std::size_t>(row)];
        const FolderCount *count = byId.value(counted.id);
        if (!count)
            continue;
        counted.files = count->files;
        counted.bytes = count->bytes;
        counted.counted = true;
        counted.remarks.setFlag(Remark::Unreadable, !count->complete);
        first = qMin(first, row);
        last = row;
    }
    if (last >= 0)
        emit dataChanged(index(first, 0), index(last, ColumnCount - 1));
}

// Adjacent rows are removed together. Rows scattered over a long list are removed by one model reset.
void ItemModel::removeIds(const QList<int> &ids)
{
    QSet<int> gone(ids.begin(), ids.end());
    constexpr int maxSteps = 200;
    int steps = 0;
    for (int last = rowCount() - 1; last >= 0 && !gone.isEmpty() && steps < maxSteps; --last) {
        const auto goes = [&](int row) { return gone.remove(m_rows[static_cast<std::size_t>(row)].id); };
        if (!goes(last))
            continue;
        int first = last;
        while (first > 0 && goes(first - 1))
            --first;
        beginRemoveRows({}, first, last);
        forget(m_rows.begin() + first, m_rows.begin() + last + 1);
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
        endRemoveRows();
        last = first;
        ++steps;
    }
    if (gone.isEmpty() || steps < maxSteps)
        return;
    beginResetModel();
    const auto stay =
        std::ranges::stable_partition(m_rows, [&](const ListRow &row) { return !gone.contains(row.id); });
    forget(stay.begin(), stay.end());
    m_rows.erase(stay.begin(), stay.end());
    endResetModel();
}

void ItemModel::forget(Rows::const_iterator first, Rows::const_iterator last)
{
    for (; first != last; ++first) {
        m_known.remove(keyOf(*first));
        m_folders.remove(keyOf(*first));
    }
}

void ItemModel::clear()
{
    beginResetModel();
    m_rows.clear();
    m_known.clear();
    m_folders.clear();
    endResetModel();
}

ItemTotals ItemModel::totals() const
{
    ItemTotals totals;
    for (const ListRow &row : m_rows) {
        totals.files += row.files;
        totals.bytes += row.bytes;
        totals.links += row.remarks.testFlag(Remark::Link) ? 1 : 0;
        totals.counted = totals.counted && row.counted;
        totals.remarks |= row.remarks;
        totals.solidState = totals.solidState || row.medium == platform::Medium::DoesNotSeek;
    }
    return totals;
}

int ItemModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ItemModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ItemModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const ListRow &row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return text(row, index.column());
    case Qt::ToolTipRole:
        return index.column() == Notes ? remarksText(row.remarks) : row.row.item.path();
    case Qt::DecorationRole:
        if (index.column() == Name) {
            const char *own = row.row.isFile ? "Document16" : "Folder16";
            return controls::image(row.remarks.testFlag(Remark::Link) ? "Link16" : own);
        }
        return {};
    case Qt::TextAlignmentRole:
        if (index.column() == Size || index.column() == Files)
            return QVariant(Qt::AlignTrailing | Qt::AlignVCenter);
        return {};
    default:
        return {};
    }
}

QString ItemModel::text(const ListRow &row, int column) const
{
    switch (column) {
    case Name:
        return row.row.item.name;
    case Folder:
        return row.row.item.folder;
    case Kind:
        return row.row.isFile ? QStringLiteral("0") : QStringLiteral("1");
    case Size:
        return row.counted ? core::sizeText(row.bytes) : tr("counting ...");
    case Files:
        return !row.row.isFile && row.counted ? QString::number(row.files) : QString();
    case Notes:
        return remarksText(row.remarks);
    default:
        return {};
    }
}

QVariant ItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case Name:
        return tr("Name");
    case Folder:
        return tr("Folder");
    case Kind:
        return tr("Kind");
    case Size:
        return tr("Size");
    case Files:
        return tr("Files");
    default:
        return tr("Remarks");
    }
}

void ItemModel::sort(int column, Qt::SortOrder order)
{
    switch (column) {
    case Size:
        return sortRows(m_rows, order, [](const ListRow &row) { return row.bytes; });
    case Files:
        return sortRows(m_rows, order, [](const ListRow &row) { return row.files; });
    case Notes: // rows with the same remarks together
        return sortRows(m_rows, order, [](const ListRow &row) { return row.remarks.toInt(); });
    default:
        return sortRows(m_rows, order, [&](const ListRow &row) { return text(row, column).toLower(); });
    }
}

QString ItemModel::remarksText(Remarks remarks)
{
    const std::pair<Remark, QString> texts[] = {
        {Remark::Protected, tr("belongs to Windows or to installed programs: will be left")},
        {Remark::InCloud, tr("in a cloud store only: will be left")},
        {Remark::ReadOnly, tr("read-only: will be left")},
        {Remark::Elsewhere, tr("lies behind a link: will be left")},
        {Remark::Link, tr("link: only the link itself is removed")},
        {Remark::OtherNames, tr("has other names (hard links)")},
        {Remark::Transformed, tr("compressed, encrypted or sparse")},
        {Remark::CloudFolder, tr("in a cloud folder, which keeps a copy of its own")},
        {Remark::InUse, tr("in use")},
        {Remark::Unreadable, tr("not all of it could be read")},
    };
    QStringList all;
    for (const auto &[remark, text] : texts) {
        if (remarks.testFlag(remark))
            all.append(text);
    }
    return all.join(QLatin1String("; "));
}

} // namespace securedelete
