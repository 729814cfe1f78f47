// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Clear.h"

namespace tracks
{

// Clears the plan's values from the item's keys. If every value of a key is to be removed, the key is deleted
// and created again, empty. Otherwise (an entry was left out, added or changed since) values are deleted one
// by one, and the rest stays usable (see withoutValues()).
void clearRegistry(Item item, const ClearPlan &plan, TraceRegistry &registry, ClearResult &result);

} // namespace tracks
