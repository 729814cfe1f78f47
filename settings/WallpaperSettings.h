// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

// The wallpaper changer: written by its form, read by the background agent, which also writes the indices.
namespace settings
{

inline constexpr Flag wallpaperEnabled{keys::wallpaperChanger, u"Enabled"};
// 0 every hour, 1 to 12 that hour of a day; period 0 AM, 1 PM.
inline constexpr Number wallpaperTime{keys::wallpaperChanger, u"TimeIndex", 8, 0, 12};
inline constexpr Number wallpaperPeriod{keys::wallpaperChanger, u"TimePeriod", 0, 0, 1};
// 0 Bing, 1 NASA, 2 the user's own list.
inline constexpr Number wallpaperSource{keys::wallpaperChanger, u"Source", 0, 0, 2};
inline constexpr Number wallpaperRegion{keys::wallpaperChanger, u"Region", 0, 0, 200};
// The current image: days back, or its index in the list.
inline constexpr Number bingIndex{keys::wallpaperChanger, u"BingCurrentIndex", 0, 0, 100};
inline constexpr Number nasaIndex{keys::wallpaperChanger, u"NasaCurrentIndex", 0, 0, 100};
inline constexpr Number customIndex{keys::wallpaperChanger, u"CustomIndex", 0, 0, 10'000};
inline constexpr TextList customFiles{keys::wallpaperChanger, u"CustomFile", u"CustomCount", 500};
inline constexpr Flag wallpaperPerMonitor{keys::wallpaperChanger, u"PerMonitor"};
inline constexpr Flag wallpaperKeep{keys::wallpaperChanger, u"Keep"};
inline constexpr Flag wallpaperOnMetered{keys::wallpaperChanger, u"OnMetered"};
inline constexpr Flag wallpaperWaitsRemote{keys::wallpaperChanger, u"WaitWhileRemote", true};

} // namespace settings
