// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/ReportModel.h"

#include "SecureDelete/Texts.h"
#include "core/SizeText.h"
#include "widgets/Controls.h"

#include <algorithm>
#include <numeric>

namespace securedelete
{

namespace
{

constexpr std::size_t maxSortedAtOnce = 2'000;

// See RowsModel::reorder().
std::vector<int> sortedPlaces(const std::vector<ShredRecord> &records, const std::vector<std::size_t> &rows,
                              ReportModel::Column column, Qt::SortOrder order)
{
    const auto compare = [&](const ShredRecord &a, const ShredRecord &b) {
        switch (column) {
        case ReportModel::Column::Result:
            return static_cast<int>(a.destroyed) - static_cast<int>(b.destroyed);
        case ReportModel::Column::Item:
            return a.path.compare(b.path, Qt::CaseInsensitive);
        case ReportModel::Column::Size:
            return a.size < b.size ? -1 : static_cast<int>(a.size > b.size);
        case ReportModel::Column::Remark:
            break;
        }
        return static_cast<int>(a.fault) - static_cast<int>(b.fault);
    };
    std::vector<int> places(rows.size());
    std::iota(places.begin(), places.end(), 0);
    std::ranges::stable_sort(places, [&](int a, int b) {
        const int result =
            compare(records[rows[static_cast<std::size_t>(a)]], records[rows[static_cast<std::size_t>(b)]]);
        return order == Qt::AscendingOrder ? result < 0 : result > 0;
    });
    return places;
}

} // namespace

ReportModel::ReportModel(Records records, QObject *parent)
    : RowsModel(parent),
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

// Long reports are sorted on a worker thread.
void ReportModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0) // Qt's "no sort column": items that were left come first
        return;
    const auto places = [records = m_records, rows = m_order, column = static_cast<Column>(column), order] {
        return sortedPlaces(*records, rows, column, order);
    };
    m_sorting.forget();
    if (m_order.size() <= maxSortedAtOnce)
        reorder(m_order, places());
    else
        m_sorting.ask([places](const core::Asking &) { return places(); },
                      [this](const std::vector<int> &sorted) { reorder(m_order, sorted); });
}

} // namespace securedelete
