// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

namespace settings
{

// An additional folder that is searched for smart shortcuts; empty for none.
inline constexpr Text smartShortcutFolder{keys::smartShortcut, u"Folder"};

} // namespace settings
