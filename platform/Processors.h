// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform
{

// How many helper threads a job may keep busy beside its own: the logical processors that this process may
// use, less the one of the job's thread; at least 1, since helpers also wait for the disk.
int osIdleCores();

} // namespace platform
