// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/BinModel.h"

#include "core/SizeText.h"
#include "platform/FileTime.h"
#include "widgets/Controls.h"

namespace securedelete
{

namespace
{

QString text(const BinRow &row, int column)
{
    switch (column) {
    case BinModel::Name:
        return row.name;
    case BinModel::Place:
        return row.originalFolder;
    case BinModel::Size:
        return core::sizeText(row.size);
    default:
        return row.removedTime == 0 ? QString() : platform::fileTimeText(row.removedTime);
    }
}

} // namespace

void BinModel::setRows(std::vector<BinRow> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

int BinModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int BinModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant BinModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const BinRow &row = m_rows[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole)
        return text(row, index.column());
    if (role == Qt::DecorationRole && index.column() == Name)
        return controls::image(row.content.isFile ? "Document16" : "Folder16");
    if (role == Qt::TextAlignmentRole && index.column() == Size)
        return QVariant(Qt::AlignTrailing | Qt::AlignVCenter);
    return {};
}

QVariant BinModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case Name:
        return tr("Name");
    case Place:
        return tr("Original Place");
    case Size:
        return tr("Size");
    default:
        return tr("Date of Removal");
    }
}

void BinModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0) // Qt's "no sort column"
        return;
    if (column == Size)
        return sortRows(m_rows, order, [](const BinRow &row) { return row.size; });
    if (column == Removed)
        return sortRows(m_rows, order, [](const BinRow &row) { return row.removedTime; });
    sortRows(m_rows, order, [column](const BinRow &row) { return text(row, column).toLower(); });
}

} // namespace securedelete
