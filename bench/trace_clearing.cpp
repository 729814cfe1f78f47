// SPDX-License-Identifier: GPL-3.0-or-later

// The track cleaner's way with temporary files, a look and the clearing of the frozen list, against a bare
// walk with DeleteFileW. Both take turns on fresh trees of the same shape, which this program makes; medians
// are compared (aim: at most 1.3). usage: trace_clearing [FILES [ROUNDS]]

#include "TrackCleaner/WindowsMachine.h"
#include "bench/FileTree.h"
#include "bench/Turns.h"
#include "platform/FileProbe.h"
#include "platform/Processors.h"
#include "platform/Win32Enumerator.h"

#include <cstdlib>

namespace
{

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
    bench::FreshFolder folder;
    const auto makeTree = [&] {
        folder.make();
        bench::makeTree(folder.text(), files);
    };
    bench::takeTurns("clearing temporary files",
                     {"bare walk and DeleteFileW", makeTree,
                      [&] { bench::expectErased(bench::eraseWhileWalking(folder.text()), files); }},
                     {"look and clearing of the frozen list", makeTree,
                      [&] { bench::expectErased(traceClear(folder.path()), files); }},
                     rounds);
    return 0;
}
