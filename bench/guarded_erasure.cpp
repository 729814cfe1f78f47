// SPDX-License-Identifier: GPL-3.0-or-later

// Listing and erasing many small files behind the guard, against a bare walk with DeleteFileW. Both take
// turns on fresh trees of the same shape, in a folder that this program makes; medians are compared.
// usage: guarded_erasure [FILES [ROUNDS]]

#include "bench/FileTree.h"
#include "bench/Turns.h"
#include "platform/Guard.h"
#include "platform/Win32Enumerator.h"

#include <cstdlib>
#include <vector>

namespace
{

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
    bench::FreshFolder folder;
    const auto makeTree = [&] {
        folder.make();
        bench::makeTree(folder.text(), files);
    };
    bench::takeTurns("erasing empty files",
                     {"bare walk and DeleteFileW", makeTree,
                      [&] { bench::expectErased(bench::eraseWhileWalking(folder.text()), files); }},
                     {"listed, then erased behind the guard", makeTree,
                      [&] { bench::expectErased(guardedErase(folder.path()), files); }},
                     rounds);
}
