// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>

#include <algorithm>
#include <numeric>
#include <type_traits>
#include <utility>
#include <vector>

namespace securedelete
{

// A table model over one vector of rows. Reordering keeps the selection, since the buttons act on it.
class RowsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

protected:
    // Row n becomes the former row places[n].
    template <class Row>
    void reorder(std::vector<Row> &rows, const std::vector<int> &places)
    {
        emit layoutAboutToBeChanged({}, VerticalSortHint);
        std::vector<Row> sorted;
        sorted.reserve(rows.size());
        std::vector<int> now(rows.size()); // new row by former row
        for (const int place : places) {
            now[static_cast<std::size_t>(place)] = static_cast<int>(sorted.size());
            sorted.push_back(std::move(rows[static_cast<std::size_t>(place)]));
        }
        rows = std::move(sorted);
        const QModelIndexList before = persistentIndexList();
        QModelIndexList after;
        for (const QModelIndex &index : before)
            after.append(createIndex(now[static_cast<std::size_t>(index.row())], index.column()));
        changePersistentIndexList(before, after);
        emit layoutChanged({}, VerticalSortHint);
    }
    // Sorts by keyOf(row), which is called once per row; stable.
    template <class Row, class KeyOf>
    void sortRows(std::vector<Row> &rows, Qt::SortOrder order, const KeyOf &keyOf)
    {
        std::vector<std::decay_t<decltype(keyOf(rows[0]))>> keys;
        keys.reserve(rows.size());
        for (const Row &row : rows)
            keys.push_back(keyOf(row));
        std::vector<int> places(rows.size());
        std::iota(places.begin(), places.end(), 0);
        std::ranges::stable_sort(places, [&](int a, int b) {
            const auto &first = keys[static_cast<std::size_t>(a)];
            const auto &second = keys[static_cast<std::size_t>(b)];
            return order == Qt::AscendingOrder ? first < second : second < first;
        });
        reorder(rows, places);
    }
};

} // namespace securedelete
