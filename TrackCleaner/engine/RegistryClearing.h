// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Clear.h"

namespace tracks
{

// Clears what the plan chose of the item's key. A key of which everything is on the list is deleted and made
// again, empty. Of any other (an entry was left out, or has come or changed since) the chosen values go one
// by one, and the rest stays usable (see withoutValues()).
void clearRegistry(Item item, const ClearPlan &plan, TraceRegistry &registry, ClearResult &result);

} // namespace tracks
