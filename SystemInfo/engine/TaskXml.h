// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"

namespace systeminfo
{

// Takes triggers, actions, author and hiddenness out of a task's definition (the task scheduler's schema,
// which [MS-TSCH] describes). Definitions come from whoever registered the task: what is damaged ends the
// reading, and what was read stays.
void readTaskDefinition(const QString &xml, ScheduledTask &task);

} // namespace systeminfo
