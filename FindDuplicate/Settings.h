// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/Categories.h"
#include "FindDuplicate/engine/CustomFileType.h"
#include "settings/Keys.h"
#include "settings/Values.h"

#include <vector>

// The registry values of the duplicate finder: read before each scan and by the options dialog, written when
// the dialog is accepted. Interface thread.
namespace duplicates
{

inline constexpr qint32 maxSmallFileSize = 10240; // of the spin box

// Below HKEY_CURRENT_USER\settings::keys::findDuplicate. A category's flag is named after its decimal index.
inline constexpr settings::Flag ignoreSmallFileValue{settings::keys::findDuplicate, u"ignoreSmallFile", true};
// Any stored number is used by a scan, even a negative one; see ScanOptions::smallFileSize about its unit.
inline constexpr settings::Number smallFileSizeValue{settings::keys::findDuplicate, u"smallFileSize", 20};
// The user's own types: their count, and each under its index as CustomFileType::storedText().
inline constexpr QStringView customFileTypeCount = u"CustomFileTypeCount";
inline constexpr QStringView customFileType = u"CustomFileType";
// Limits the reads for a damaged count.
inline constexpr quint32 maxCustomFileTypes = 1000;

struct FinderSettings {
    // The built-in categories in their order, with the extensions of settings::loadFileTypesOrDefaults(),
    // followed by the custom types.
    CategorySelection categories;
    std::vector<CustomFileType> customTypes;
    bool ignoreSmallFile = true;
    qint32 smallFileSize = 20;
};

// Everything selected, without custom types.
FinderSettings defaultFinderSettings();

// Replaces the values in `held` by the stored ones, missing values by their defaults. If the settings key
// does not exist, nothing was ever stored: then only the extensions of the categories are updated.
void reloadFinderSettings(FinderSettings &held);
// Takes the flags from `categories`, which must have an entry for each custom type. False if any value could
// not be written.
bool saveFinderSettings(const FinderSettings &changed);

} // namespace duplicates
