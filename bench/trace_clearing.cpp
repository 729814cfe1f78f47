// SPDX-License-Identifier: GPL-3.0-or-later

// The track cleaner's way with temporary files, a look and the clearing of the frozen list, against a bare
// walk with DeleteFileW. Both take turns on fresh trees of the same shape, which this program makes; medians
// are compared. usage: trace_clearing [FILES [ROUNDS]]

#include "TrackCleaner/WindowsMachine.h"
#include "bench/Bench.h"
#include "platform/FileProbe.h"
#include "platform/Processors.h"
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
        const platform::FileHandle made(
            CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    }
}

int bareClear(const std::wstring &folder)
{
    WIN32_FIND_DATAW found;
    int erased = 0;
    const platform::FindHandle search(FindFirstFileW((folder + L"\\*").c_str(), &found));
    do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..")
            continue;
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
            erased += bareClear(folder + L"\\" + name);
        else
            erased += DeleteFileW((folder + L"\\" + name).c_str());
    } while (FindNextFileW(search.get(), &found));
    return erased;
}

class Silent : public tracks::ScanListener, public tracks::ClearListener
{
public:
    void itemBegins(tracks::Item) override {}
    void folderEntered(const QString &) override {}
    void traceFound(int) override {}
    void itemScanned(tracks::Item, const tracks::ItemTraces &) override {}
    void fileBegins(const QString &, int) override {}
    void itemCleared(tracks::Item) override {}
};

int traceClear(const QString &root)
{
    tracks::ScanOptions options;
    options.items[tracks::indexOf(tracks::Item::TempFiles)] = true;
    options.locations.temporary = options.locations.temporaryTarget = root;
    options.keepUsedToday = false;
    options.now = tracks::currentFileTime();
    options.readAheadThreads = platform::osIdleCores();
    platform::Win32Enumerator enumerator;
    tracks::WindowsRegistry registry;
    tracks::WindowsRights rights;
    tracks::GuardedRemover remover;
    Silent listener;
    const core::CancelFlag never;
    tracks::ClearPlan plan;
    plan.items = options.items;
    plan.found = std::make_shared<const tracks::ScanResult>(
        tracks::scanTraces(options, {enumerator, platform::fileProbe(), registry, rights}, listener, never));
    return tracks::clearTraces(plan, registry, remover, listener, never).deletedFiles;
}

} // namespace

int main(int argc, char **argv)
{
    const int files = argc > 1 ? std::atoi(argv[1]) : 100'000;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 3;
    std::vector<double> bare, ours;
    for (int round = 0; round < rounds; ++round) {
        const QTemporaryDir first, second;
        const QString root = second.path().replace(u'/', u'\\');
        makeTree(first.path().toStdWString(), files);
        makeTree(root.toStdWString(), files);
        int erased = 0;
        bare.push_back(bench::seconds([&] { erased = bareClear(first.path().toStdWString()); }));
        if (erased != files)
            std::printf("the bare loop erased %d of %d\n", erased, files);
        ours.push_back(bench::seconds([&] { erased = traceClear(root); }));
        if (erased != files)
            std::printf("the track cleaner erased %d of %d\n", erased, files);
    }
    bench::report("bare walk and DeleteFileW", bench::median(bare), "s");
    bench::report("look and clearing of the frozen list", bench::median(ours), "s");
    bench::report("ratio (aim: at most 1.3)", bench::median(ours) / bench::median(bare));
    return 0;
}
