// SPDX-License-Identifier: GPL-3.0-or-later

// The scan engine alone, on one thread: 1,000,000 files in 100,000 folders that are listed from memory, so
// that no file system is measured. "Row" is what the engine keeps of a folder; models and views come on top
// of it.

#include "DiskUsage/engine/Scan.h"
#include "bench/Bench.h"

#include <QRandomGenerator>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <malloc.h>
#endif

namespace
{

constexpr int folderCount = 100'000;
constexpr int filesPerFolder = 10;
constexpr int subfoldersPerFolder = 10;
constexpr int rounds = 5;

// Memory that the program has asked for and not given back, in bytes.
quint64 heapSize()
{
#ifdef Q_OS_WIN
    quint64 bytes = 0;
    HANDLE heaps[64];
    const DWORD count = qMin<DWORD>(GetProcessHeaps(64, heaps), 64);
    for (DWORD i = 0; i < count; ++i) {
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry)) {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
                bytes += entry.cbData + entry.cbOverhead;
        }
    }
    return bytes;
#else
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
#endif
}

// The tree: folder number n is "Folder n", and below it stand the folders 10 n + 1 to 10 n + 10. The listings
// are ready before anything is measured.
class PreparedListings : public core::DirectoryEnumerator
{
public:
    PreparedListings()
    {
        QRandomGenerator random(1);
        core::DirectoryListing listing;
        m_listings.reserve(folderCount);
        for (int i = 0; i < folderCount; ++i) {
            listing.clear();
            listing.readable = true;
            addSubfolders(i, listing);
            addFiles(random, listing);
            m_listings.push_back(listing);
        }
    }

    void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &) override
    {
        out = m_listings[static_cast<std::size_t>(
            QStringView(folder).sliced(folder.lastIndexOf(QLatin1Char(' ')) + 1).toInt())];
    }
    std::optional<core::FileIdentity> identity(const QString &) override { return std::nullopt; }

private:
    static void addSubfolders(int parent, core::DirectoryListing &listing)
    {
        const int first = parent * subfoldersPerFolder + 1;
        for (int i = first; i < qMin(first + subfoldersPerFolder, folderCount); ++i) {
            const QString name = QStringLiteral("Folder %1").arg(i);
            core::DirectoryEntry entry;
            entry.name = name;
            entry.attributes = core::AttributeDirectory;
            listing.add(entry);
        }
    }

    static void addFiles(QRandomGenerator &random, core::DirectoryListing &listing)
    {
        static const QStringList extensions{QStringLiteral(".jpg"),
                                            QStringLiteral(".dll"),
                                            QStringLiteral(".txt"),
                                            QStringLiteral(".h"),
                                            QStringLiteral(".PDF"),
                                            QStringLiteral(".tar.gz"),
                                            QString()};
        for (int i = 0; i < filesPerFolder; ++i) {
            const QString name = QStringLiteral("document %1").arg(random.bounded(1'000'000)) +
                                 extensions[random.bounded(int(extensions.size()))];
            core::DirectoryEntry entry;
            entry.name = name;
            entry.size = random.bounded(50'000'000U);
            listing.add(entry);
        }
    }

    std::vector<core::DirectoryListing> m_listings;
};

class Silent : public diskusage::ScanListener
{
public:
    void totalSubFolders(int) override {}
    void folderEntered(const QString &) override {}
    void itemSeen(int) override {}
};

diskusage::ScanResult scan(PreparedListings &disk, bool collectFileTypes)
{
    Silent listener;
    const core::CancelFlag cancel;
    diskusage::ScanOptions options;
    options.fileTypes = core::defaultFileTypes();
    options.collectFileTypes = collectFileTypes;
    return diskusage::scanFolder(QStringLiteral("C:\\Folder 0"), options, disk, listener, cancel);
}

double bytesKept(PreparedListings &disk, bool collectFileTypes)
{
    const quint64 before = heapSize();
    const diskusage::ScanResult result = scan(disk, collectFileTypes);
    return static_cast<double>(heapSize() - before);
}

} // namespace

int main()
{
    PreparedListings disk;
    const double rowBytes = bytesKept(disk, false);
    const double allBytes = bytesKept(disk, true);
    std::vector<double> times;
    int entries = 0;
    for (int i = 0; i < rounds; ++i) {
        diskusage::ScanResult result; // is freed outside the measured time
        times.push_back(bench::seconds([&] { result = scan(disk, true); }));
        entries = result.itemsSeen;
    }
    const double seconds = bench::median(times);

    bench::report("engine scan entries", entries);
    bench::report("engine scan seconds", seconds, "s (aim: under 2)");
    bench::report("engine scan entries per second", entries / seconds);
    bench::report("engine scan bytes per folder row", rowBytes / folderCount, "(aim: under 2048)");
    bench::report("engine scan bytes per file record",
                  (allBytes - rowBytes) / (folderCount * filesPerFolder));
    return 0;
}
