// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/DiskUsage/engine/ScanRecorder.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <limits>

using core::DirectoryEntry;
using diskusage::FileTypeResult;
using diskusage::LargestChildren;
using diskusage::ScanOptions;
using diskusage::ScanResult;
using tests::MemoryEnumerator;
using tests::ScanRecorder;

namespace
{

const QString root = QStringLiteral("C:\\r");

ScanOptions defaultOptions(int threads = 0)
{
    ScanOptions options;
    options.fileTypes = core::defaultFileTypes();
    options.readAheadThreads = threads;
    return options;
}

QString describe(const QString &path, const diskusage::Folder &folder)
{
    return QStringLiteral("%1 bytes %2 files %3 folders %4 index %5 depth %6 readable %7 max %8")
        .arg(path)
        .arg(folder.bytes)
        .arg(folder.files)
        .arg(folder.folders)
        .arg(folder.index)
        .arg(folder.depth)
        .arg(folder.readable)
        .arg(folder.maxData);
}

// The result as text, to be compared with the text of the reference.
QStringList describe(const ScanResult &result)
{
    QStringList lines;
    for (std::size_t i = 0; i < result.folders.size(); ++i) {
        const diskusage::Folder &folder = result.folders[i];
        lines.append(describe(result.path(int(i)), folder));
    }
    for (const diskusage::BiggestFile &file : result.biggestFiles)
        lines.append(QStringLiteral("big %1\\%2 %3 %4")
                         .arg(file.folder, file.name)
                         .arg(file.size)
                         .arg(file.lastAccessTime));
    const auto describeType = [&](const FileTypeResult &type) {
        lines.append(QStringLiteral("%1: %2").arg(type.category.name).arg(type.total));
        for (const diskusage::FileRecord &file : type.files)
            lines.append(QStringLiteral("  %1\\%2 %3 %4")
                             .arg(result.path(file.folder), file.name)
                             .arg(file.size)
                             .arg(file.lastAccessTime));
    };
    std::for_each(result.fileTypes.begin(), result.fileTypes.end(), describeType);
    describeType(result.others);
    return lines + result.unreadable;
}

// The scan once more, as plainly as it can be written: recursion, sorting, and going through the categories.
class Reference
{
public:
    explicit Reference(MemoryEnumerator &source) : disk(source) {}

    QStringList scan()
    {
        scanFolder(root, 0);
        std::stable_sort(files.begin(), files.end(),
                         [](const File &a, const File &b) { return a.size > b.size; });
        for (std::size_t i = 0; i < files.size() && i < 20 && files[i].size > 0; ++i)
            rows.append(QStringLiteral("big %1 %2 %3")
                            .arg(files[i].path)
                            .arg(files[i].size)
                            .arg(files[i].lastAccess));
        QStringList categories;
        for (const core::FileTypeCategory &category : core::defaultFileTypes())
            categories.append(category.name);
        for (const QString &category : categories + QStringList{QStringLiteral("Other file types")}) {
            rows.append(QStringLiteral("%1: %2").arg(category).arg(totals[category]));
            rows += records[category];
        }
        return rows + unreadable;
    }

private:
    struct File {
        QString path;
        quint64 size;
        quint64 lastAccess;
    };
    diskusage::Folder scanFolder(const QString &path, int depth)
    {
        const core::CancelFlag never;
        core::DirectoryListing listing;
        disk.list(path, listing, never);
        if (!listing.readable)
            unreadable.append(path);
        const qsizetype row = rows.size();
        rows.append(QString());
        diskusage::Folder own;
        std::vector<LargestChildren::Child> children;
        for (std::size_t i = 0; i < listing.size(); ++i) {
            const DirectoryEntry entry = listing.at(i);
            const QString name = entry.name.toString();
            if (entry.isDirectory()) {
                const diskusage::Folder below = scanFolder(path + u'\\' + name, depth + 1);
                own.bytes += below.bytes;
                own.files += below.files;
                own.folders += below.folders + 1;
                children.push_back({name, qint64(below.bytes), LargestChildren::SubFolder});
            } else {
                own.bytes += entry.size;
                ++own.files;
                children.push_back({name, qint64(entry.size), LargestChildren::File});
                addFile(path, name, entry);
            }
        }
        std::stable_sort(children.begin(), children.end(),
                         [](const auto &a, const auto &b) { return a.size > b.size; });
        for (std::size_t i = 0; i < children.size() && i < 10; ++i)
            own.maxData += QStringLiteral("%1:%2:%3;")
                               .arg(children[i].name)
                               .arg(children[i].size)
                               .arg(int(children[i].kind));
        own.index = nextIndex++;
        own.depth = depth;
        own.readable = listing.readable;
        rows[row] = describe(path, own);
        return own;
    }

    void addFile(const QString &folder, const QString &name, const DirectoryEntry &entry)
    {
        files.push_back({folder + u'\\' + name, entry.size, entry.lastAccessTime});
        QStringList categories;
        for (const core::FileTypeCategory &category : core::defaultFileTypes()) {
            if (category.extensions.contains(core::completeExtension(name), Qt::CaseInsensitive))
                categories.append(category.name);
        }
        for (const QString &category :
             categories.isEmpty() ? QStringList{QStringLiteral("Other file types")} : categories) {
            totals[category] += entry.size;
            records[category].append(
                QStringLiteral("  %1\\%2 %3 %4").arg(folder, name).arg(entry.size).arg(entry.lastAccessTime));
        }
    }

    MemoryEnumerator &disk;
    QStringList rows, unreadable;
    int nextIndex = 0;
    std::vector<File> files;
    QHash<QString, quint64> totals;
    QHash<QString, QStringList> records;
};

void buildRandomTree(MemoryEnumerator &disk, quint32 seed)
{
    const QStringList endings{QStringLiteral(".ZIP"), QStringLiteral(".tar.gz"), QStringLiteral(".2024.jpg"),
                              QStringLiteral(".jpg"), QString()};
    QRandomGenerator random(seed);
    QStringList folders{root};
    disk.addFolder(root);
    const quint32 sizes = seed % 3 == 0 ? 4U : 1'000'000U; // few sizes: many ties
    const int entries = seed % 5 == 0 ? 20 : 300; // also too few to fill the list of the biggest files
    for (int i = 0; i < entries; ++i) {
        const QString path = folders[random.bounded(int(folders.size()))] + QStringLiteral("\\n%1").arg(i);
        if (random.bounded(4) > 0) {
            disk.addFile(path + endings[random.bounded(int(endings.size()))], random.bounded(sizes), 0,
                         quint64(i));
            continue;
        }
        disk.addFolder(path);
        folders.append(path);
        if (random.bounded(15) == 0)
            disk.setUnreadable(path);
    }
}

} // namespace

class TestScan : public QObject
{
    Q_OBJECT

private slots:
    void sameAsReference_data();
    void sameAsReference();
    void progress();
    void rootNames_data();
    void rootNames();
    void missingRoot();
    void keepsWhatAFolderGaveBeforeItBrokeOff();
    void largeSizes();
    void categories();
    void cycle();
    void cancelled_data() { sameAsReference_data(); }
    void cancelled();
};

void TestScan::sameAsReference_data()
{
    QTest::addColumn<int>("threads");
    QTest::newRow("alone") << 0;
    QTest::newRow("one thread ahead") << 1;
    QTest::newRow("four threads ahead") << 4;
}

void TestScan::sameAsReference()
{
    QFETCH(int, threads);
    for (quint32 seed = 1; seed <= 30; ++seed) {
        MemoryEnumerator disk;
        buildRandomTree(disk, seed);
        const ScanResult result = scan(disk, root, defaultOptions(threads));
        QCOMPARE(describe(result), Reference(disk).scan());
        QVERIFY(!result.cancelled);
    }
}

// A step for every direct subfolder that is not left out, the unreadable one included, and none below.
void TestScan::progress()
{
    MemoryEnumerator disk;
    disk.addFile(QStringLiteral("C:\\r\\a\\deep\\f"), 1);
    disk.addFile(QStringLiteral("C:\\r\\f"), 1);
    disk.setUnreadable(QStringLiteral("C:\\r\\b"));
    disk.addLink(QStringLiteral("C:\\r\\c"), root);
    ScanRecorder recorder;
    scan(disk, root, {}, recorder);
    QCOMPARE(recorder.events.join(u'|'),
             QStringLiteral("total 4|item 1|entered C:\\r\\a|item 2|item 3|item 4|item 5|entered C:\\r\\b|"
                            "item 6|entered C:\\r\\c"));
}

void TestScan::rootNames_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("childPath");
    const auto row = [](const char *chosen, const char *name, const char *path, const char *childPath) {
        QTest::newRow(chosen) << QString::fromLatin1(chosen) << QString::fromLatin1(name)
                              << QString::fromLatin1(path) << QString::fromLatin1(childPath);
    };
    row("C:\\", "C:\\", "C:\\", "C:\\x");
    row("C:", "C:\\", "C:\\", "C:\\x");
    row("C:\\x\\", "x", "C:\\x", "C:\\x\\y");
    row("C:/x", "x", "C:\\x", "C:\\x\\y");
    row("\\\\host\\share\\", "share", "\\\\host\\share", "\\\\host\\share\\z");
}

void TestScan::rootNames()
{
    QFETCH(QString, chosen);
    MemoryEnumerator disk;
    disk.addFile(QStringLiteral("C:\\x\\y\\f"), 1);
    disk.addFile(QStringLiteral("C:\\big"), 9);
    disk.addFile(QStringLiteral("\\\\host\\share\\z\\f"), 1);
    const ScanResult result = scan(disk, chosen);
    QTEST(result.folders[0].name, "name");
    QTEST(result.path(0), "path");
    QTEST(result.path(1), "childPath");
    if (result.biggestFiles[0].size == 9)
        QCOMPARE(result.biggestFiles[0].folder, QStringLiteral("C:\\"));
}

void TestScan::missingRoot()
{
    MemoryEnumerator disk;
    ScanRecorder recorder;
    const ScanResult result = scan(disk, QStringLiteral("X:\\"), defaultOptions(2), recorder);
    QCOMPARE(recorder.events, QStringList{QStringLiteral("total 1")});
    QCOMPARE(describe(result).first(),
             QStringLiteral("X:\\ bytes 0 files 0 folders 0 index 0 depth 0 readable 0 max "));
    QCOMPARE(result.unreadable, QStringList{QStringLiteral("X:\\")});
}

void TestScan::keepsWhatAFolderGaveBeforeItBrokeOff()
{
    MemoryEnumerator disk;
    disk.addFile(QStringLiteral("C:\\r\\part\\one"), 5);
    disk.addFile(QStringLiteral("C:\\r\\whole\\two"), 1);
    disk.setBrokenOff(QStringLiteral("C:\\r\\part"));
    for (const int threads : {0, 2}) {
        const ScanResult result = scan(disk, QStringLiteral("C:\\r"), defaultOptions(threads));
        QCOMPARE(result.readInPart, QStringList{QStringLiteral("C:\\r\\part")});
        QCOMPARE(result.unreadable, QStringList());
        QVERIFY(result.folders[1].readable);
        QCOMPARE(result.folders[0].bytes, 6U);
    }
}

void TestScan::largeSizes()
{
    MemoryEnumerator disk;
    const quint64 fiveGibibytes = quint64{5} << 30;
    disk.addFile(QStringLiteral("C:\\r\\a\\five"), fiveGibibytes);
    disk.addFile(QStringLiteral("C:\\r\\a\\odd"), quint64{1} << 63);
    const ScanResult result = scan(disk, root);
    QCOMPARE(result.folders[0].bytes, fiveGibibytes + (quint64{1} << 63));
    // Children have signed sizes; one that does not fit is not taken for a negative one.
    QCOMPARE(result.folders[1].maxData, QStringLiteral("odd:9223372036854775807:0;five:5368709120:0;"));
}

void TestScan::categories()
{
    ScanOptions options;
    options.fileTypes = {{QStringLiteral("off"), {QStringLiteral(".a"), QStringLiteral(".b")}, false},
                         {QStringLiteral("one"), {QStringLiteral(".a")}, true},
                         {QStringLiteral("two"), {QStringLiteral(".a"), QStringLiteral(".c")}, true}};
    MemoryEnumerator disk;
    disk.addFile(QStringLiteral("C:\\r\\1.A"), 1);
    disk.addFile(QStringLiteral("C:\\r\\2.b"), 2);
    disk.addFile(QStringLiteral("C:\\r\\3.c"), 4);
    const ScanResult result = scan(disk, root, options);
    QCOMPARE(result.fileTypes.size(), 3U);
    QVERIFY(result.fileTypes[0].files.empty());
    QVERIFY(result.fileTypes[0].category == options.fileTypes[0]);
    QCOMPARE(result.fileTypes[1].total, 1U);
    QCOMPARE(result.fileTypes[2].total, 5U);
    QCOMPARE(result.others.total, 2U);
    QCOMPARE(result.others.category.name, QStringLiteral("Other file types"));
    QList<int> indexes{result.fileTypes[1].files[0].index, result.fileTypes[2].files[0].index,
                       result.others.files[0].index, result.fileTypes[2].files[1].index};
    QCOMPARE(indexes, (QList<int>{0, 1, 2, 3}));
}

void TestScan::cycle()
{
    MemoryEnumerator disk;
    disk.addFile(QStringLiteral("C:\\r\\f"), 3);
    disk.addLink(QStringLiteral("C:\\r\\loop"), root);
    const ScanResult result = scan(disk, root);
    QCOMPARE(result.folders.size(), 2U);
    QVERIFY(result.folders[1].cycle && result.folders[1].readable && !result.folders[0].cycle);
    QCOMPARE(result.folders[1].index, 0);
    QCOMPARE(result.folders[0].folders, 1);
    QCOMPARE(result.folders[0].bytes, 3U);
    QCOMPARE(result.folders[0].maxData, QStringLiteral("f:3:0;loop:0:1;"));
    QCOMPARE(result.unreadable, QStringList());
}

// Wherever a scan is cancelled: its rows are complete, and every total is what its parts add up to.
void TestScan::cancelled()
{
    QFETCH(int, threads);
    MemoryEnumerator disk;
    buildRandomTree(disk, 4);
    ScanRecorder whole;
    scan(disk, root, defaultOptions(), whole);
    for (int after = 1; after < whole.events.size(); after += 3) {
        ScanRecorder recorder;
        recorder.cancelAfter = after;
        const ScanResult result = scan(disk, root, defaultOptions(threads), recorder);
        QVERIFY(result.cancelled);
        QCOMPARE(result.itemsSeen, int(recorder.events.filter(QStringLiteral("item")).size()));
        QVERIFY(recorder.events.size() <= after + 1); // a folder that was just met is still announced

        quint64 bytes = 0;
        int files = 0;
        for (const FileTypeResult &type : result.fileTypes) {
            bytes += type.total;
            files += int(type.files.size());
        }
        QCOMPARE(result.folders[0].bytes, bytes + result.others.total);
        QCOMPARE(result.folders[0].files, files + int(result.others.files.size()));
        QCOMPARE(result.folders[0].folders, int(result.folders.size()) - 1);
        std::vector<bool> given(result.folders.size());
        for (const diskusage::Folder &folder : result.folders)
            given.at(std::size_t(folder.index)) = true;
        QVERIFY(std::all_of(given.begin(), given.end(), [](bool was) { return was; }));
    }

    ScanRecorder before;
    before.cancel.set();
    const ScanResult nothing = scan(disk, root, defaultOptions(threads), before);
    QVERIFY(nothing.cancelled);
    QVERIFY(nothing.folders.empty());
    QCOMPARE(before.events, QStringList());
}

QTEST_GUILESS_MAIN(TestScan)
#include "tst_scan.moc"
