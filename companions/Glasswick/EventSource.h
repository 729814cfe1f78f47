// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Event.h"

#include <optional>
#include <windows.h>

namespace agent
{

automation::Event eventNow(automation::EventKind kind, int value = 0);

// Converts a message of a top-level window to an event; nullopt if no rule is interested. Timers and private
// messages are handled elsewhere.
std::optional<automation::Event> eventOf(UINT message, WPARAM wParam, LPARAM lParam);

} // namespace agent
