// SPDX-License-Identifier: GPL-3.0-or-later

// Listing and erasing many small files behind the guard, against a bare walk with DeleteFileW. Both take
// turns on fresh trees of the same shape, in a folder that this program makes; medians are compared.
// usage: guarded_erasure [FILES [ROUNDS]]

#include "bench/Bench.h"
#include "platform/Guard.h"
#include "platform/Win32Enumerator.h"

#include <QTemporaryDir>

#include <windows.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace
{

constexpr int filesInAFolder = 500;

void makeTree(const std::wstring &root, int files)
{
    std::wstring folder;
    for (int index = 0; index < files; ++index) {
        if (index % filesInAFolder == 0) {
            folder = root + L"\\" + std::to_wstring(index);
            CreateDirectoryW(folder.c_str(), nullptr);
        }
        const std::wstring path = folder + L"\\file" + std::to_wstring(index) + L".tmp";
        CloseHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    }
}

int bareErase(const std::wstring &folder)
{
    WIN32_FIND_DATAW found;
    int erased = 0;
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..")
            continue;
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
            erased += bareErase(folder + L"\\" + name);
        else
            erased += DeleteFileW((folder + L"\\" + name).c_str());
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return erased;
}

// As a cleaner does it: everything is listed first, and the frozen list is erased.
int guardedErase(const QString &root)
{
    std::vector<platform::ShownItem> items;
    platform::Win32Enumerator enumerator;
    core::DirectoryListing folders, files;
    enumerator.list(root, folders, {});
    for (std::size_t index = 0; index < folders.size(); ++index) {
        const QString folder = root + u'\\' + folders.at(index).name.toString();
        enumerator.list(folder, files, {});
        for (std::size_t file = 0; file < files.size(); ++file) {
            const core::DirectoryEntry entry = files.at(file);
            items.push_back(
                {root, folder + u'\\' + entry.name.toString(), entry.size, entry.lastWriteTime, {}});
        }
    }
    int erased = 0;
    platform::GuardedErasure erasure;
    for (const platform::ShownItem &item : items)
        erased += erasure.erase(item) == platform::Guarded::Done;
    return erased;
}

} // namespace

int main(int argc, char **argv)
{
    const int files = argc > 1 ? std::atoi(argv[1]) : 20'000;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 3;
    std::vector<double> bare, guarded;
    for (int round = 0; round < rounds; ++round) {
        const QTemporaryDir first, second;
        const QString root = second.path().replace(u'/', u'\\');
        makeTree(first.path().toStdWString(), files);
        makeTree(root.toStdWString(), files);
        int erased = 0;
        bare.push_back(bench::seconds([&] { erased = bareErase(first.path().toStdWString()); }));
        if (erased != files)
            std::printf("the bare loop erased %d of %d\n", erased, files);
        guarded.push_back(bench::seconds([&] { erased = guardedErase(root); }));
        if (erased != files)
            std::printf("the guard erased %d of %d\n", erased, files);
    }
    bench::report("bare walk and DeleteFileW", bench::median(bare), "s");
    bench::report("listed, then erased behind the guard", bench::median(guarded), "s");
    bench::report("ratio", bench::median(guarded) / bench::median(bare));
}
