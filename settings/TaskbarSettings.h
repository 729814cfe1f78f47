// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

// The transparent taskbar and the tray icon: written by their forms, read by the background agent.
namespace settings
{

inline constexpr Flag taskbarEnabled{keys::glasswick, u"Enabled"};
inline constexpr Number taskbarLevel{keys::glasswick, u"TransparentLevel", 50, 0, 90}; // percent
// 0 clear, 1 blurred, 2 acrylic.
inline constexpr Number taskbarMode{keys::glasswick, u"TaskbarBackgroundMode", 0, 0, 2};

inline constexpr Flag trayIconShown{keys::root, u"ShowTrayIcon"};

} // namespace settings
