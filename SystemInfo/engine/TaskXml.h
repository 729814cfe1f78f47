// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"

namespace systeminfo
{

// Reads triggers, actions, author and the hidden flag from a task definition (the task scheduler's schema,
// see [MS-TSCH]). The XML is untrusted: parsing stops at the first error, and what was read so far is kept.
void readTaskDefinition(const QString &xml, ScheduledTask &task);

} // namespace systeminfo
