// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

namespace settings
{

// Where smart shortcuts are looked for besides the desktop and the Start menu; empty for nowhere.
inline constexpr Text smartShortcutFolder{keys::smartShortcut, u"Folder"};

} // namespace settings
