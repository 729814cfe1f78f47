// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/BinReader.h"
#include "SecureDelete/RowsModel.h"

namespace securedelete
{

class BinModel : public RowsModel
{
    Q_OBJECT

public:
    enum Column { Name, Place, Size, Removed, ColumnCount };

    using RowsModel::RowsModel;

    void setRows(std::vector<BinRow> rows);
    const std::vector<BinRow> &rows() const { return m_rows; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    std::vector<BinRow> m_rows;
};

} // namespace securedelete
