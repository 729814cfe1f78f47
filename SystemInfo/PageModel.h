// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Row.h"

class QModelIndex;
class QStandardItemModel;

namespace systeminfo
{

// Roles of the items beside Qt's own, in both columns.
inline constexpr int openPathRole = Qt::UserRole;
inline constexpr int problemRole = Qt::UserRole + 1;

// Fills the model with the columns "Field" and "Value". Any thread, while no view has the model.
void fillModel(QStandardItemModel &model, const Page &page);
// The page's row behind an index of that model; null for none.
const Row *rowAt(const Page &page, const QModelIndex &index);
// The index of a row by the positions from its section on; column 0.
QModelIndex indexOf(const QStandardItemModel &model, const std::vector<int> &row);

} // namespace systeminfo
