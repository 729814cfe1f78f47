// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/RowsModel.h"
#include "SecureDelete/engine/Shred.h"
#include "core/LatestAnswer.h"

#include <memory>
#include <vector>

namespace securedelete
{

using Records = std::shared_ptr<const std::vector<ShredRecord>>;

// The outcome for each item. Items that were left come first.
class ReportModel : public RowsModel
{
    Q_OBJECT

public:
    enum class Column { Result, Item, Size, Remark };
    static constexpr int columns = 4;

    explicit ReportModel(Records records, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    const ShredRecord &record(int row) const { return (*m_records)[m_order[static_cast<std::size_t>(row)]]; }

    Records m_records;
    std::vector<std::size_t> m_order;
    core::LatestAnswer m_sorting;
};

} // namespace securedelete
