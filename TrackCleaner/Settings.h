// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

#include <array>

// The module's values in the registry.
namespace tracks
{

// Temporary files younger than a day are listed but not cleared.
inline constexpr settings::Flag keepUsedToday{settings::keys::trackCleaner, u"KeepUsedToday", true};

// Which items are checked, in the catalogue's order.
inline constexpr std::array checkedItems{
    settings::Flag{settings::keys::trackCleaner, u"RecentFiles", true},
    settings::Flag{settings::keys::trackCleaner, u"TypedPaths", true},
    settings::Flag{settings::keys::trackCleaner, u"SearchHistory", true},
    settings::Flag{settings::keys::trackCleaner, u"RunDialog", true},
    settings::Flag{settings::keys::trackCleaner, u"LogFiles", true},
    settings::Flag{settings::keys::trackCleaner, u"ErrorReporting", true},
    settings::Flag{settings::keys::trackCleaner, u"NetworkData", true},
    settings::Flag{settings::keys::trackCleaner, u"TempFiles", true},
};

} // namespace tracks
