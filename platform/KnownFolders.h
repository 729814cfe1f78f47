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

// The folder known to the shell, including redirection; native separators, no trailing separator. Does not
// check whether it exists (it may be on a server). Empty if this Windows has no such folder.
QString knownFolder(KnownFolder folder);

} // namespace platform
