// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Row.h"

class QModelIndex;
class QStandardItemModel;

namespace systeminfo
{

// Item roles in addition to Qt's, in both columns.
inline constexpr int openPathRole = Qt::UserRole;
inline constexpr int problemRole = Qt::UserRole + 1;

// Fills the model with the columns "Field" and "Value". Any thread, as long as no view is attached.
void fillModel(QStandardItemModel &model, const Page &page);
// The page's row for an index of that model; null if there is none.
const Row *rowAt(const Page &page, const QModelIndex &index);
// The column 0 index of a row, by its position path beginning with the section.
QModelIndex indexOf(const QStandardItemModel &model, const std::vector<int> &row);

} // namespace systeminfo
