// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Values.h"

class QHeaderView;

// The widths, order, hidden columns and sorting of a list, kept in a setting of its module.
namespace columns
{

// As text, in the order on the screen: "0:240 2:90 1:-120 >2" (a hidden column has its width negative; the
// last word is the sorted column, with "<" for ascending order and ">" for descending).
QString stateText(const QHeaderView &header);
// False, and nothing is changed, when the text was made for other columns or is damaged.
bool restore(QHeaderView &header, const QString &text);

// Restores what is stored, and stores what the user changes from then on. Call it when the model is set;
// `setting` must outlive the header.
void keep(QHeaderView *header, const settings::Text &setting);

} // namespace columns
