// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/TraceRegistry.h"

#include <QStringList>

#include <vector>

namespace tracks
{

// What the values of a history key are to be when the ones with these names go and the others stay usable.
// Explorer finds entries through an order list ("MRUList": the letters of the values' names; "MRUListEx":
// their numbers, 32 bits each, with -1 at the end), or by counting until a name is missing ("url1", "url2"):
// the order list loses the entries that go, and what is counted is numbered anew.
std::vector<RegistryValue> withoutValues(const std::vector<RegistryValue> &values, const QStringList &names);

} // namespace tracks
