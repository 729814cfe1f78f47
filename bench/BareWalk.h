// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <windows.h>

#include <condition_variable>
#include <cwchar>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// The least that a walk over a folder tree can do. Raw handles on purpose: nothing may stand between it and
// the system.
namespace bench
{

// Lists one folder; returns its number of entries and appends its subfolders' paths.
inline unsigned long long bareList(const std::wstring &folder, std::vector<std::wstring> &subfolders)
{
    WIN32_FIND_DATAW data;
    unsigned long long entries = 0;
    const HANDLE find = FindFirstFileW((folder + L"\\*").c_str(), &data);
    if (find == INVALID_HANDLE_VALUE)
        return 0;
    do {
        if (!std::wcscmp(data.cFileName, L".") || !std::wcscmp(data.cFileName, L".."))
            continue;
        ++entries;
        if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
            subfolders.push_back(folder + L'\\' + data.cFileName);
    } while (FindNextFileW(find, &data));
    FindClose(find);
    return entries;
}

inline unsigned long long bareWalk(const std::wstring &folder)
{
    std::vector<std::wstring> subfolders;
    unsigned long long entries = bareList(folder, subfolders);
    for (const std::wstring &subfolder : subfolders)
        entries += bareWalk(subfolder);
    return entries;
}

// Two bare walkers that share one stack of folders: what a second thread can gain on this system at best.
inline unsigned long long twoBareWalkers(const std::wstring &root)
{
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::wstring> waiting{root};
    int busy = 0;
    unsigned long long total = 0;
    const auto work = [&] {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [&] { return !waiting.empty() || busy == 0; });
            if (waiting.empty())
                return;
            const std::wstring folder = std::move(waiting.back());
            waiting.pop_back();
            ++busy;
            lock.unlock();
            std::vector<std::wstring> subfolders;
            const unsigned long long entries = bareList(folder, subfolders);
            lock.lock();
            --busy;
            total += entries;
            for (std::wstring &subfolder : subfolders)
                waiting.push_back(std::move(subfolder));
            changed.notify_all();
        }
    };
    std::thread second(work);
    work();
    second.join();
    return total;
}

} // namespace bench
