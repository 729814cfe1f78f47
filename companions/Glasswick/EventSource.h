// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Event.h"

#include <optional>
#include <windows.h>

namespace agent
{

automation::Event eventNow(automation::EventKind kind, int value = 0);

// What Windows says to a top-level window, as an event; none for all that is not of interest to a rule.
// Timers and private messages are not its business.
std::optional<automation::Event> eventOf(UINT message, WPARAM wParam, LPARAM lParam);

} // namespace agent
