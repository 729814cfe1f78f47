// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

// Light by day and dark by night: written by its form, read by the background agent.
namespace settings
{

inline constexpr Flag autoDarkEnabled{keys::autoDarkMode, u"Enabled"};
inline constexpr Flag autoDarkBySun{keys::autoDarkMode, u"UseLocationData"};
// Hour 1 to 12, period 0 AM, 1 PM.
inline constexpr Number lightHour{keys::autoDarkMode, u"LightHour", 7, 1, 12};
inline constexpr Number lightMinute{keys::autoDarkMode, u"LightMinute", 0, 0, 59};
inline constexpr Number lightPeriod{keys::autoDarkMode, u"LightPeriod", 0, 0, 1};
inline constexpr Number darkHour{keys::autoDarkMode, u"DarkHour", 7, 1, 12};
inline constexpr Number darkMinute{keys::autoDarkMode, u"DarkMinute", 0, 0, 59};
inline constexpr Number darkPeriod{keys::autoDarkMode, u"DarkPeriod", 1, 0, 1};
// What is switched: 0 apps and Windows, 1 apps, 2 Windows.
inline constexpr Number autoDarkAction{keys::autoDarkMode, u"Action", 0, 0, 2};
inline constexpr Text autoDarkLatitude{keys::autoDarkMode, u"Latitude"};
inline constexpr Text autoDarkLongitude{keys::autoDarkMode, u"Longitude"};
inline constexpr Flag autoDarkWaits{keys::autoDarkMode, u"WaitForFullScreen", true};

} // namespace settings
