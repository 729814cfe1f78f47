// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Method.h"
#include "settings/Keys.h"
#include "settings/Values.h"

// The registry values of secure delete. Interface thread only.
namespace securedelete
{

// Below HKEY_CURRENT_USER\settings::keys::secureDelete.
inline constexpr settings::Number deleteModeValue{settings::keys::secureDelete, u"DeleteMode", 0, 0, 3};
inline constexpr settings::Number numPassesValue{settings::keys::secureDelete, u"NumPasses", 1};
// The folder that is filling a drive's free space; empty if there is none.
inline constexpr settings::Text freeSpaceFolderValue{settings::keys::secureDelete, u"FreeSpaceFolder"};

struct Settings {
    Method method = Method::Gutmann;
    int randomPasses = 1; // 1 to maxRandomPasses

    static Settings load();
    // False if the registry could not be written.
    bool save() const;
};

} // namespace securedelete
