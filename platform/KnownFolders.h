// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform
{

enum class KnownFolder {
    Desktop,
    Downloads,
    Documents,
    Pictures,
    Music,
    Videos,
    Profile,
    ProgramFiles,
    ProgramFilesX86,
    ProgramData,
    RoamingAppData,
    LocalAppData,
    Windows,
    System,
    Recent,
    StartMenuPrograms
};

// The folder as the shell knows it, redirection included, native separators, no separator at the end. Does
// not look whether it exists (it may be on a server). Empty when this Windows has no such folder.
QString knownFolder(KnownFolder folder);

} // namespace platform
