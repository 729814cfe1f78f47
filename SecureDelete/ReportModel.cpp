// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/ReportModel.h"

#include "SecureDelete/Texts.h"
#include "core/SizeText.h"
#include "widgets/Controls.h"

#include <algorithm>
#include <numeric>

namespace securedelete
{

ReportModel::ReportModel(Records records, QObject *parent)
    : QAbstractTableModel(parent),
      m_records(std::move(records)),
      m_order(m_records->size())
{
    std::iota(m_order.begin(), m_order.end(), std::size_t{0});
    std::ranges::stable_partition(m_order,
                                  [this](std::size_t index) { return !(*m_records)[index].destroyed; });
}

int ReportModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_order.size());
}

int ReportModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant ReportModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const ShredRecord &shown = record(index.row());
    const auto column = static_cast<Column>(index.column());
    if (role == Qt::DecorationRole && column == Column::Result)
        return controls::image(shown.destroyed ? "Checkmark16" : "Warning16");
    if (role == Qt::TextAlignmentRole && column == Column::Size)
        return QVariant(Qt::AlignTrailing | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (column) {
    case Column::Result:
        return shown.destroyed ? tr("Destroyed") : tr("Left");
    case Column::Item:
        return shown.path;
    case Column::Size:
        return shown.isFolder || shown.isLink ? QString() : core::sizeText(shown.size);
    case Column::Remark:
        break;
    }
    return Texts::outcome(shown);
}

QVariant ReportModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (static_cast<Column>(section)) {
    case Column::Result:
        return tr("Result");
    case Column::Item:
        return tr("Item");
    case Column::Size:
        return tr("Size");
    case Column::Remark:
        break;
    }
    return tr("What Happened");
}

void ReportModel::sort(int column, Qt::SortOrder order)
{
    emit layoutAboutToBeChanged();
    const auto less = [&](std::size_t a, std::size_t b) {
        const ShredRecord &first = (*m_records)[a];
        const ShredRecord &second = (*m_records)[b];
        switch (static_cast<Column>(column)) {
        case Column::Result:
            return first.destroyed < second.destroyed;
        case Column::Item:
            return first.path.compare(second.path, Qt::CaseInsensitive) < 0;
        case Column::Size:
            return first.size < second.size;
        case Column::Remark:
            break;
        }
        return first.fault < second.fault;
    };
    std::ranges::stable_sort(m_order, [&](std::size_t a, std::size_t b) {
        return order == Qt::AscendingOrder ? less(a, b) : less(b, a);
    });
    emit layoutChanged();
}

} // namespace securedelete
