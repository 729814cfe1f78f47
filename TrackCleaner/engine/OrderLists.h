// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/TraceRegistry.h"

#include <QStringList>

#include <vector>

namespace tracks
{

// The values that a history key must contain after the named ones are removed, so that the rest stays usable.
// Explorer finds entries through an order list ("MRUList": the letters of the value names; "MRUListEx": their
// numbers, 32 bits each, ended by -1), or by counting until a name is missing ("url1", "url2"). Removed
// entries are dropped from the order list; counted names are renumbered.
std::vector<RegistryValue> withoutValues(const std::vector<RegistryValue> &values, const QStringList &names);

} // namespace tracks
