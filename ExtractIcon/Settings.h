// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

#include <QStringList>

// What the icon tools keep in the registry. Interface thread.
namespace icons
{

inline constexpr settings::Text loadFolder{settings::keys::extractIcon, u"loadIconPath"};
inline constexpr settings::Text exportFolder{settings::keys::extractIcon, u"exportIconPath"};

inline constexpr int maxRecentFiles = 8; // "recentFile0" and so on, newest first

QStringList recentFiles();
// Puts `path` in front; the same file in another case is one and the same.
void addRecentFile(const QString &path);

} // namespace icons
