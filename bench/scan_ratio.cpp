// SPDX-License-Identifier: GPL-3.0-or-later

// The folder scan against the least that anyone can do: a recursion of FindFirstFileW and FindNextFileW over
// the same tree. All ways take turns, so that a change of the machine's speed meets them alike; the medians
// are compared. usage: scan_ratio FOLDER [ROUNDS]

#include "DiskUsage/engine/Scan.h"
#include "bench/BareWalk.h"
#include "bench/Bench.h"
#include "platform/Processors.h"
#include "platform/Win32Enumerator.h"

#include <cstdlib>
#include <string>

namespace
{

class Silent : public diskusage::ScanListener
{
public:
    void totalSubFolders(int) override {}
    void folderEntered(const QString &) override {}
    void itemSeen(int) override {}
};

quint64 scan(const QString &folder, int readAheadThreads)
{
    platform::Win32Enumerator enumerator;
    Silent listener;
    const core::CancelFlag cancel;
    diskusage::ScanOptions options;
    options.fileTypes = core::defaultFileTypes();
    options.readAheadThreads = readAheadThreads;
    return static_cast<quint64>(
        diskusage::scanFolder(folder, options, enumerator, listener, cancel).itemsSeen);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2)
        return 2;
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const std::wstring wide = folder.toStdWString();
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 7;
    const int pool = platform::osIdleCores();

    std::vector<double> bare, two, plain, ahead;
    quint64 bareEntries = 0, twoEntries = 0, plainEntries = 0, aheadEntries = 0;
    bench::bareWalk(wide); // warms the system's cache
    for (int round = 0; round < rounds; ++round) {
        bare.push_back(bench::seconds([&] { bareEntries = bench::bareWalk(wide); }));
        two.push_back(bench::seconds([&] { twoEntries = bench::twoBareWalkers(wide); }));
        plain.push_back(bench::seconds([&] { plainEntries = scan(folder, 0); }));
        ahead.push_back(bench::seconds([&] { aheadEntries = scan(folder, pool); }));
    }
    if (bareEntries != plainEntries || bareEntries != aheadEntries || bareEntries != twoEntries) {
        std::fprintf(stderr, "the walks saw different trees: %llu, %llu, %llu entries\n", bareEntries,
                     plainEntries, aheadEntries);
        return 1;
    }
    bench::report("entries", static_cast<double>(bareEntries));
    bench::report("bare FindFirstFileW/FindNextFileW walk", bench::median(bare), "s");
    bench::report("two bare walkers side by side", bench::median(two), "s");
    bench::report("scan, pool off", bench::median(plain), "s");
    bench::report("scan, pool of " + std::to_string(pool), bench::median(ahead), "s");
    bench::report("ratio, two bare walkers (what a second thread can gain here)",
                  bench::median(two) / bench::median(bare));
    bench::report("ratio, pool off (aim: at most 1.25)", bench::median(plain) / bench::median(bare));
    bench::report("ratio, pool on (aim: at most 0.6)", bench::median(ahead) / bench::median(bare));
    return 0;
}
