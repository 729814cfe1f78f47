// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileTypes.h"

#include <QStringView>

// The file types as the user has them: one table for the folder size analyzer, which edits it, and for the
// duplicate finder. Stored values are input from outside: what does not parse counts as absent.
namespace settings
{

// Below HKEY_CURRENT_USER\settings::keys::folderSizeAnalyzer.
inline constexpr QStringView fileTypeDataCount = u"FileTypeDataCount";
inline constexpr QStringView fileTypeData = u"FileTypeData";
// A damaged count must not cost four thousand million reads.
inline constexpr int maxFileTypes = 1000;

// True when at least one category was stored; `table` is replaced in any case.
bool loadFileTypes(core::FileTypeTable &table);
// The stored categories, or the built-in ones when there are none.
core::FileTypeTable loadFileTypesOrDefaults();
// False when Windows refused any of it.
bool saveFileTypes(const core::FileTypeTable &table);

} // namespace settings
