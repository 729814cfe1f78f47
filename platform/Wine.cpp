// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Wine.h"

#include <windows.h>

namespace platform
{

bool isWine()
{
    static const bool wine = [] {
        const HMODULE system = GetModuleHandleW(L"ntdll");
        return system && GetProcAddress(system, "wine_get_version");
    }();
    return wine;
}

} // namespace platform
