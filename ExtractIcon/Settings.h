// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

#include <QStringList>

// The registry values of the icon tools. Interface thread.
namespace icons
{

inline constexpr settings::Text loadFolder{settings::keys::extractIcon, u"loadIconPath"};
inline constexpr settings::Text exportFolder{settings::keys::extractIcon, u"exportIconPath"};

inline constexpr int maxRecentFiles = 8; // "recentFile0" and so on, newest first

QStringList recentFiles();
// Moves `path` to the front; paths that differ only in case are the same file.
void addRecentFile(const QString &path);

} // namespace icons
