// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Processors.h"

#include <windows.h>

#include <algorithm>
#include <bit>

namespace platform
{

int osIdleCores()
{
    DWORD_PTR process = 0;
    DWORD_PTR system = 0;
    if (!GetProcessAffinityMask(GetCurrentProcess(), &process, &system))
        return 1;
    return std::max(1, std::popcount(process) - 1);
}

} // namespace platform
