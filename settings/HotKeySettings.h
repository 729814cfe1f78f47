// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

// The keyboard shortcuts: written by their form, read by the background agent.
namespace settings
{

inline constexpr Flag hotKeysEnabled{keys::hotKey, u"Enabled"};
// Each as written by automation::commandText().
inline constexpr TextList hotKeyCommands{keys::hotKey, u"command", u"commandCount", 200};

} // namespace settings
