// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/ItemModel.h"

#include "core/SizeText.h"
#include "widgets/Controls.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace securedelete
{

int ItemModel::add(const std::vector<ListRow> &rows)
{
    QSet<QString> known;
    QStringList folders;
    for (const std::vector<ListRow> *list : {&std::as_const(m_rows), &rows}) {
        for (const ListRow &row : *list) {
            if (!row.row.isFile && !row.row.item.isLink())
                folders.append(row.row.item.path().toLower() + u'\\');
        }
    }
    const auto isCovered = [&](const QString &path) {
        return std::ranges::any_of(folders, [&](const QString &folder) { return path.startsWith(folder); });
    };
    QList<int> covered;
    for (const ListRow &row : m_rows) {
        const QString path = row.row.item.path().toLower();
        known.insert(path);
        if (isCovered(path))
            covered.append(row.id);
    }
    std::vector<ListRow> added;
    for (const ListRow &row : rows) {
        const QString path = row.row.item.path().toLower();
        if (known.contains(path) || isCovered(path))
            continue;
        known.insert(path);
        added.push_back(row);
    }
    removeIds(covered);
    if (!added.empty()) {
        const int first = rowCount();
        beginInsertRows({}, first, first + static_cast<int>(added.size()) - 1);
        m_rows.insert(m_rows.end(), added.begin(), added.end());
        endInsertRows();
    }
    return static_cast<int>(rows.size() - added.size());
}

void ItemModel::setCounts(int id, quint64 files, quint64 bytes, bool complete)
{
    const auto found = std::ranges::find(m_rows, id, &ListRow::id);
    if (found == m_rows.end())
        return;
    found->files = files;
    found->bytes = bytes;
    found->counted = true;
    found->remarks.setFlag(Remark::Unreadable, !complete);
    const int row = static_cast<int>(found - m_rows.begin());
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void ItemModel::removeIds(const QList<int> &ids)
{
    const QSet<int> gone(ids.begin(), ids.end());
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (!gone.contains(m_rows[static_cast<std::size_t>(row)].id))
            continue;
        beginRemoveRows({}, row, row);
        m_rows.erase(m_rows.begin() + row);
        endRemoveRows();
    }
}

void ItemModel::clear()
{
    beginResetModel();
    m_rows.clear();
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
    emit layoutAboutToBeChanged();
    const auto less = [&](const ListRow &a, const ListRow &b) {
        if (column == Size)
            return a.bytes < b.bytes;
        if (column == Files)
            return a.files < b.files;
        return text(a, column).compare(text(b, column), Qt::CaseInsensitive) < 0;
    };
    std::ranges::stable_sort(m_rows, [&](const ListRow &a, const ListRow &b) {
        return order == Qt::AscendingOrder ? less(a, b) : less(b, a);
    });
    emit layoutChanged();
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
