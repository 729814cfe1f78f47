// SPDX-License-Identifier: GPL-3.0-or-later

// The time from starting a program until its main window is visible and idle, for the application and for an
// empty QMainWindow program, in turns. usage: startup APPLICATION EMPTY_PROGRAM [ROUNDS]

#include "bench/Bench.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace
{

struct Search {
    DWORD process;
    HWND found;
};

BOOL CALLBACK takeVisible(HWND window, LPARAM parameter)
{
    auto *search = reinterpret_cast<Search *>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    RECT rect;
    // Helper windows are small or hidden.
    if (process != search->process || !IsWindowVisible(window) || !GetWindowRect(window, &rect) ||
        rect.right - rect.left < 900)
        return TRUE;
    search->found = window;
    return FALSE;
}

double untilVisible(std::wstring program)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    const double elapsed = bench::seconds([&] {
        if (!CreateProcessW(nullptr, program.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                            &process))
            std::exit(1);
        Search search{process.dwProcessId, nullptr};
        while (!search.found) {
            Sleep(1);
            EnumWindows(takeVisible, reinterpret_cast<LPARAM>(&search));
        }
        // Answered when the first painting is done and the event loop runs.
        SendMessageW(search.found, WM_NULL, 0, 0);
    });
    TerminateProcess(process.hProcess, 0);
    WaitForSingleObject(process.hProcess, 5000);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return elapsed;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 3)
        return 2;
    const std::wstring application(argv[1], argv[1] + std::strlen(argv[1]));
    const std::wstring empty(argv[2], argv[2] + std::strlen(argv[2]));
    const int rounds = argc > 3 ? std::atoi(argv[3]) : 9;
    std::vector<double> applicationTimes, emptyTimes;
    untilVisible(application);
    untilVisible(empty);
    for (int round = 0; round < rounds; ++round) {
        emptyTimes.push_back(untilVisible(empty));
        applicationTimes.push_back(untilVisible(application));
    }
    bench::report("empty QMainWindow visible after", bench::median(emptyTimes), "s");
    bench::report("main window visible after", bench::median(applicationTimes), "s");
    bench::report("ratio (aim: at most 1.5)", bench::median(applicationTimes) / bench::median(emptyTimes));
    return 0;
}
