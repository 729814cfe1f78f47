// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

namespace platform
{

// CreatePopupMenu. Destroying a menu destroys its submenus.
struct MenuTraits {
    using Raw = HMENU;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { DestroyMenu(raw); }
};
using MenuHandle = UniqueHandle<MenuTraits>;

} // namespace platform
