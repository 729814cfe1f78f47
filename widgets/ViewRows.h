// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/CsvFile.h"

#include <QAbstractItemView>
#include <QPointer>

// The rows of a list or tree as texts for the clipboard and for files. Interface thread.
namespace viewrows
{

// Limit for copying rows, which takes some hundredths of a second.
inline constexpr int maxCopied = 20'000;

// The visible columns in visual order.
QList<int> shownColumns(const QAbstractItemView &view);
QStringList titles(const QAbstractItemView &view, const QList<int> &columns);

// The selected rows from top to bottom, as indexes in column 0.
QModelIndexList selectedRows(const QAbstractItemView &view);
// The selected rows from top to bottom, fields separated by tabs as spreadsheets expect; tabs and line breaks
// within a field become blanks. Null if more than maxCopied rows are selected.
QString selectedText(const QAbstractItemView &view);

enum class Columns { Shown, All };

// All rows of the view in their current order, usually the visible columns only. The model is read on the
// interface thread, a few milliseconds at a time, while the table is written; if it changes meanwhile, the
// export fails with an explanation. For a tree, all branches that the model has loaded are exported, and the
// first column contains the path: "Memory > Slot 1 > Size".
csv::Table table(const QAbstractItemView &view, const QString &suggestedName, Columns which = Columns::Shown);

} // namespace viewrows
