// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"

namespace systeminfo
{

// "Every 2 weeks on Monday, Friday at 13:00, repeated every 15 minutes"
QString triggerText(const TaskTrigger &trigger);
// "PT1H30M" -> "1 hour 30 minutes"; unchanged if it does not parse.
QString isoDurationText(const QString &duration);
// "The task has not run yet (0x41303)"
QString taskResultText(quint32 result);
QString taskStateText(int state);

} // namespace systeminfo
