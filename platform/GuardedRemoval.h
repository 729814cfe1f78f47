// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Guard.h"

#include <optional>

namespace platform
{

// Does disk I/O; any thread. What prevents moving the item; nullopt if nothing does. Call it before asking
// the user, so that nobody is asked about something impossible. Changes nothing and downloads nothing from
// the cloud.
std::optional<Guarded> removalObstacle(const ShownItem &item);

// Does disk I/O; any thread. Checks again, since the user took time to answer, and moves the file or folder
// to the recycle bin. If the bin does not accept it, it stays where it is; it is never erased. Untraced if
// it is gone although Windows did not report that it was moved. The item is
// held open from the check until the shell has finished (see HeldFile).
Guarded moveShownItem(const ShownItem &item);

} // namespace platform
