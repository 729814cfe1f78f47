// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Guard.h"

#include <optional>

namespace platform
{

// Disk, any thread. What stands in the way of moving the item; empty when nothing does. Asked before the user
// is, so that nobody is asked about what cannot be done. Touches nothing and fetches nothing from a cloud
// store.
std::optional<Guarded> removalObstacle(const ShownItem &item);

// Disk, any thread. Checks once more, since time has passed with the user's answer, and moves the file or
// folder to the recycle bin. What the bin does not take stays where it is: nothing falls back to erasing.
// From the check on until the shell has answered the item is held (see HeldFile).
Guarded moveShownItem(const ShownItem &item);

} // namespace platform
