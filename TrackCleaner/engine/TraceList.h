// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Traces.h"
#include "core/CancelFlag.h"

#include <QStringList>

#include <vector>

namespace tracks
{

// Columns of the list of an item's traces.

// The file name; for a value its meaning, or its name.
QString entryText(const ScanResult &found, Item item, std::size_t row);
// The file's folder; for a value "HKEY_CURRENT_USER\key\name".
QString placeText(const ScanResult &found, Item item, std::size_t row);
quint64 timeOf(const ItemTraces &traces, std::size_t row); // FILETIME

enum class ListKey { Found, Entry, Place, Size, Time, Keep }; // Found: in scan order

struct ListOrder {
    ListKey key = ListKey::Found;
    bool ascending = true;
    QStringList words; // all must occur in the entry or the place, ignoring case
};

// The matching rows, stably sorted. Empty when cancelled.
std::vector<quint32> arranged(const ScanResult &found, Item item, const ListOrder &order,
                              const core::CancelFlag &cancel);

} // namespace tracks
