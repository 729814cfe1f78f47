// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Traces.h"
#include "core/CancelFlag.h"

#include <QStringList>

#include <vector>

namespace tracks
{

// What a list of an item's traces shows of a row.

// The file's name; of a value what it stands for, or its name.
QString entryText(const ScanResult &found, Item item, std::size_t row);
// The file's folder; of a value "HKEY_CURRENT_USER\key\name".
QString placeText(const ScanResult &found, Item item, std::size_t row);
quint64 timeOf(const ItemTraces &traces, std::size_t row); // FILETIME

enum class ListKey { Found, Entry, Place, Size, Time, Keep }; // Found: as they were found

struct ListOrder {
    ListKey key = ListKey::Found;
    bool ascending = true;
    QStringList words; // every one in the entry or the place, in any case
};

// The rows that hold the words, in order; equal ones as they were found. Empty when cancelled.
std::vector<quint32> arranged(const ScanResult &found, Item item, const ListOrder &order,
                              const core::CancelFlag &cancel);

} // namespace tracks
