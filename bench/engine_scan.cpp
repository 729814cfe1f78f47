// SPDX-License-Identifier: GPL-3.0-or-later

// The scan engine alone, on one thread: 1,000,000 files in 100,000 folders that are listed from memory, so
// that no file system is measured. "Row" is what the engine keeps of a folder; models and views come on top
// of it.

#include "DiskUsage/engine/Scan.h"
#include "bench/Bench.h"
#include "tests/support/MemoryEnumerator.h"

#include <QRandomGenerator>

#ifdef Q_OS_WIN
#include <windows.h>

#include <psapi.h>
#else
#include <malloc.h>
#endif

namespace
{

constexpr int folderCount = 100'000;
constexpr int filesPerFolder = 10;
constexpr int subfoldersPerFolder = 10;
constexpr int rounds = 5;

// Memory that the program has asked for, in bytes.
quint64 heapSize()
{
#ifdef Q_OS_WIN
    PROCESS_MEMORY_COUNTERS_EX counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS *>(&counters),
                         sizeof counters);
    return counters.PrivateUsage;
#else
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
#endif
}

void buildTree(tests::MemoryEnumerator &disk)
{
    const QStringList extensions{QStringLiteral(".jpg"), QStringLiteral(".dll"), QStringLiteral(".txt"),
                                 QStringLiteral(".h"),   QStringLiteral(".PDF"), QStringLiteral(".tar.gz"),
                                 QStringLiteral("")};
    QRandomGenerator random(1);
    QStringList folders{QStringLiteral("C:\\bench")};
    for (int i = 0; i < folderCount; ++i) {
        if (i > 0)
            folders.append(folders[(i - 1) / subfoldersPerFolder] + QStringLiteral("\\Folder %1").arg(i));
        disk.addFolder(folders[i]);
        for (int k = 0; k < filesPerFolder; ++k) {
            const QString name = QStringLiteral("document %1").arg(random.bounded(1'000'000));
            disk.addFile(folders[i] + QLatin1Char('\\') + name +
                             extensions[random.bounded(int(extensions.size()))],
                         random.bounded(50'000'000U));
        }
    }
}

class Silent : public diskusage::ScanListener
{
public:
    void totalSubFolders(int) override {}
    void folderEntered(const QString &) override {}
    void itemSeen(int) override {}
};

diskusage::ScanResult scan(tests::MemoryEnumerator &disk, bool collectFileTypes)
{
    Silent listener;
    const core::CancelFlag cancel;
    diskusage::ScanOptions options;
    options.fileTypes = core::defaultFileTypes();
    options.collectFileTypes = collectFileTypes;
    return diskusage::scanFolder(QStringLiteral("C:\\bench"), options, disk, listener, cancel);
}

double bytesKept(tests::MemoryEnumerator &disk, bool collectFileTypes)
{
    const quint64 before = heapSize();
    const diskusage::ScanResult result = scan(disk, collectFileTypes);
    return static_cast<double>(heapSize() - before);
}

} // namespace

int main()
{
    tests::MemoryEnumerator disk;
    disk.setRecording(false);
    buildTree(disk);

    const double rowBytes = bytesKept(disk, false);
    const double allBytes = bytesKept(disk, true);
    std::vector<double> times;
    int entries = 0;
    for (int i = 0; i < rounds; ++i)
        times.push_back(bench::seconds([&] { entries = scan(disk, true).itemsSeen; }));
    const double seconds = bench::median(times);

    bench::report("engine scan entries", entries);
    bench::report("engine scan seconds", seconds, "s (aim: under 2)");
    bench::report("engine scan entries per second", entries / seconds);
    bench::report("engine scan bytes per folder row", rowBytes / folderCount, "(aim: under 2048)");
    bench::report("engine scan bytes per file record",
                  (allBytes - rowBytes) / (folderCount * filesPerFolder));
    return 0;
}
