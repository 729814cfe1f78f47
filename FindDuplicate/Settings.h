// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/Categories.h"
#include "FindDuplicate/engine/CustomFileType.h"
#include "settings/Keys.h"
#include "settings/Values.h"

#include <vector>

// What the duplicate finder keeps in the registry: read before each scan and by the options dialog, written
// when the dialog is accepted. Interface thread.
namespace duplicates
{

inline constexpr qint32 maxSmallFileSize = 10240; // of the spin box

// Below HKEY_CURRENT_USER\settings::keys::findDuplicate. A category's flag has its index in decimal as name.
inline constexpr settings::Flag ignoreSmallFileValue{settings::keys::findDuplicate, u"ignoreSmallFile", true};
// Any stored number counts for a scan, a negative one too; see ScanOptions::smallFileSize about its unit.
inline constexpr settings::Number smallFileSizeValue{settings::keys::findDuplicate, u"smallFileSize", 20};
// The user's own types: a number of values, and each under its index, as CustomFileType::storedText().
inline constexpr QStringView customFileTypeCount = u"CustomFileTypeCount";
inline constexpr QStringView customFileType = u"CustomFileType";
// A damaged count must not cost four thousand million reads.
inline constexpr quint32 maxCustomFileTypes = 1000;

struct FinderSettings {
    // The built-in categories in their order, with the extensions of settings::loadFileTypesOrDefaults(),
    // then one for each custom type.
    CategorySelection categories;
    std::vector<CustomFileType> customTypes;
    bool ignoreSmallFile = true;
    qint32 smallFileSize = 20;
};

// Everything selected, and no custom type.
FinderSettings defaultFinderSettings();

// Replaces what is held by what is stored, absent values by their defaults. Without the settings key nothing
// was ever stored: what is held stays, but for the extensions of the categories.
void reloadFinderSettings(FinderSettings &held);
// Takes the flags from `categories`, which must have an entry for each custom type. False when Windows
// refuses any of it.
bool saveFinderSettings(const FinderSettings &changed);

} // namespace duplicates
