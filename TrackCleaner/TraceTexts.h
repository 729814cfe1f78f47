// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Clear.h"
#include "TrackCleaner/engine/RegFile.h"

#include <QString>
#include <QStringList>

// What the module says about traces. Interface thread.
namespace tracks
{

QString label(const CatalogueRow &row);

// What the item's traces are, and what clearing them costs the user.
QString itemText(Item item);
// The same of one of them.
QString traceText(const ScanResult &found, Item item, std::size_t row);
// "will be cleared", "left out", "kept: part of a database"
QString stateText(const ScanResult &found, const LeftOut &leftOut, Item item, std::size_t row);
QString outcomeText(Outcome outcome);

// "3 item(s) found", with the size where the item has one.
QString countText(int count);
QString countText(int count, quint64 bytes);

// What stands in the way of an item: what is kept, what needs an administrator. Empty when nothing does.
QString noteText(const ScanResult &found, Item item);

// "12 files (3.40 MB) and 4 entries of the registry"
QString totalsText(const ClearTotals &totals);
// The question before the clearing.
QString questionText(const ClearPlan &plan);
// What the clearing did, and what stayed by its reasons.
QString resultText(const ClearResult &result);

// How a file that was to put values back is wrong.
QString faultText(const RegFileContent &content);

} // namespace tracks
