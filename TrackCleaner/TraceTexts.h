// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Clear.h"
#include "TrackCleaner/engine/RegFile.h"

#include <QString>
#include <QStringList>

// Texts about traces. Interface thread.
namespace tracks
{

QString label(const CatalogueRow &row);

// Describes an item's traces and what the user loses by clearing them.
QString itemText(Item item);
// The same for a single trace.
QString traceText(const ScanResult &found, Item item, std::size_t row);
// "will be cleared", "left out", "kept: part of a database"
QString stateText(const ScanResult &found, const LeftOut &leftOut, Item item, std::size_t row);
QString outcomeText(Outcome outcome);

// "3 item(s) found", with the size if the item has one.
QString countText(int count);
QString countText(int count, quint64 bytes);

// What is kept and what needs an administrator; empty if nothing.
QString noteText(const ScanResult &found, Item item);

// "12 files (3.40 MB) and 4 entries of the registry"
QString totalsText(const ClearTotals &totals);
// The question before clearing.
QString questionText(const ClearPlan &plan);
// What was cleared, and what was left, grouped by reason.
QString resultText(const ClearResult &result);

// What is wrong with a .reg file that was to be restored.
QString faultText(const RegFileContent &content);

} // namespace tracks
