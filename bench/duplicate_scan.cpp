// SPDX-License-Identifier: GPL-3.0-or-later

// The scan for duplicates against the bare walk of the same tree. Both take turns, so that a change of the
// machine's speed meets them alike; the medians are compared. usage: duplicate_scan FOLDER [ROUNDS]

#include "FindDuplicate/engine/Scan.h"
#include "bench/BareWalk.h"
#include "bench/Bench.h"
#include "core/FileTypes.h"
#include "platform/Processors.h"
#include "platform/Win32Enumerator.h"

#include <cstdlib>
#include <string>

namespace
{

class Silent : public duplicates::ScanListener
{
public:
    void totalSubFolders(int) override {}
    void folderEntered() override {}
    void pathChanged(const QString &) override {}
    void itemSeen(int) override {}
};

duplicates::ScanResult scan(const QString &folder, int readAheadThreads)
{
    platform::Win32Enumerator enumerator;
    Silent listener;
    const core::CancelFlag cancel;
    duplicates::ScanOptions options;
    options.categories = duplicates::categorySelection(core::defaultFileTypes(), {});
    options.readAheadThreads = readAheadThreads;
    return duplicates::findDuplicates(folder, options, enumerator, listener, cancel);
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

    std::vector<double> bare, plain, ahead;
    quint64 bareEntries = 0;
    duplicates::ScanResult plainResult, aheadResult;
    bench::bareWalk(wide); // warms the system's cache
    for (int round = 0; round < rounds; ++round) {
        bare.push_back(bench::seconds([&] { bareEntries = bench::bareWalk(wide); }));
        plain.push_back(bench::seconds([&] { plainResult = scan(folder, 0); }));
        ahead.push_back(bench::seconds([&] { aheadResult = scan(folder, pool); }));
    }
    if (bareEntries != static_cast<quint64>(plainResult.itemsSeen) ||
        plainResult.itemsSeen != aheadResult.itemsSeen || plainResult.groups != aheadResult.groups) {
        std::fprintf(stderr, "the walks saw different trees: %llu, %d, %d entries\n", bareEntries,
                     plainResult.itemsSeen, aheadResult.itemsSeen);
        return 1;
    }
    bench::report("entries", static_cast<double>(bareEntries));
    bench::report("files compared", static_cast<double>(plainResult.filesCompared));
    bench::report("groups found", static_cast<double>(plainResult.groups.size()));
    bench::report("bare FindFirstFileW/FindNextFileW walk", bench::median(bare), "s");
    bench::report("duplicate scan, pool off", bench::median(plain), "s");
    bench::report("duplicate scan, pool of " + std::to_string(pool), bench::median(ahead), "s");
    bench::report("ratio, pool off", bench::median(plain) / bench::median(bare));
    bench::report("ratio, pool on (aim: at most 1.3)", bench::median(ahead) / bench::median(bare));
    return 0;
}
