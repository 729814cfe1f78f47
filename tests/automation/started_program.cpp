// SPDX-License-Identifier: GPL-3.0-or-later

// Notes in "started.txt" in its current folder that it was started, and how: priority class, processors,
// arguments.
#include <windows.h>

#include <bit>
#include <cstdio>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int)
{
    if (FILE *file = std::fopen("started.txt", "a")) {
        DWORD_PTR own = 0, all = 0;
        GetProcessAffinityMask(GetCurrentProcess(), &own, &all);
        std::fprintf(file, "started %lx %d %s\n", GetPriorityClass(GetCurrentProcess()), std::popcount(own),
                     arguments);
        std::fclose(file);
    }
    return 0;
}
