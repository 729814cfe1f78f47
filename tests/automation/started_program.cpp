// SPDX-License-Identifier: GPL-3.0-or-later

// Writes its current folder into "started.txt" there, for tst_agent.
#include <windows.h>

#include <cstdio>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    if (FILE *file = std::fopen("started.txt", "a")) {
        std::fputs("started\n", file);
        std::fclose(file);
    }
    return 0;
}
