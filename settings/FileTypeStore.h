// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileTypes.h"

#include <QStringView>

// The user's file types: one table, edited in the folder size analyzer and used by the duplicate finder too.
// Stored values are untrusted: what does not parse counts as absent.
namespace settings
{

// Below HKEY_CURRENT_USER\settings::keys::folderSizeAnalyzer.
inline constexpr QStringView fileTypeDataCount = u"FileTypeDataCount";
inline constexpr QStringView fileTypeData = u"FileTypeData";
// Limits the reads for a damaged count.
inline constexpr int maxFileTypes = 1000;

// True if at least one category was stored; `table` is replaced in any case.
bool loadFileTypes(core::FileTypeTable &table);
// The stored categories, or the built-in ones when there are none.
core::FileTypeTable loadFileTypesOrDefaults();
// False if any value could not be written.
bool saveFileTypes(const core::FileTypeTable &table);

} // namespace settings
