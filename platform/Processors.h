// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform
{

// The number of helper threads a job may use in addition to its own: the logical processors available to this
// process, minus one; at least 1, since helpers also wait for the disk.
int osIdleCores();

} // namespace platform
