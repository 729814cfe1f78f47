// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Values.h"

class QHeaderView;

// The widths, order, hidden columns and sorting of a list, kept in a setting of its module.
namespace columns
{

// In visual order: "0:240 2:90 1:-120 >2" (a negative width marks a hidden column; the last word is the
// sorted column, "<" for ascending, ">" for descending order).
QString stateText(const QHeaderView &header);
// False, with nothing changed, if the text is damaged or belongs to other columns.
bool restore(QHeaderView &header, const QString &text);

// Restores the stored state and stores changes by the user from then on. Call after setting the model;
// `setting` must outlive the header.
void keep(QHeaderView *header, const settings::Text &setting);

} // namespace columns
