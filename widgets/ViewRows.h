// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/CsvFile.h"

#include <QAbstractItemView>
#include <QPointer>

// The rows of a list or tree as texts, for the clipboard and for files. Interface thread.
namespace viewrows
{

// At most so many rows are copied at once, which takes some hundredths of a second.
inline constexpr int maxCopied = 20'000;

// The columns that are shown, in the order in which they are shown.
QList<int> shownColumns(const QAbstractItemView &view);
QStringList titles(const QAbstractItemView &view, const QList<int> &columns);

// The selected rows from top to bottom, by their index in column 0.
QModelIndexList selectedRows(const QAbstractItemView &view);
// The selected rows from top to bottom, fields separated by tabs, as spreadsheets take them; tabs and line
// breaks inside a field become blanks. Null when more than maxCopied rows are selected.
QString selectedText(const QAbstractItemView &view);

// All rows of the view as they stand now, in the shown columns. The model is read on the interface thread, a
// few milliseconds at a time, while the table is written; when it changes meanwhile, the export fails with a
// text that says so. In a tree, of the branches that the model holds, the first column names the way to the
// row: "Memory > Slot 1 > Size".
csv::Table table(const QAbstractItemView &view, const QString &suggestedName);

} // namespace viewrows
