// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/DiskUsage/engine/ScanRecorder.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using core::DirectoryEntry;
using core::ExcludedFolder;
using diskusage::FileTypeResult;
using diskusage::LargestChildren;
using diskusage::ScanOptions;
using diskusage::ScanResult;
using tests::MemoryEnumerator;
using tests::ScanRecorder;

namespace
{

const QString root = u"C:\\r"_s;
constexpr int poolSizes[] = {0, 1, 4};

ScanOptions defaultOptions(int threads = 0)
{
    ScanOptions options;
    options.fileTypes = core::defaultFileTypes();
    options.readAheadThreads = threads;
    return options;
}

QString describe(const QString &path, const diskusage::Folder &folder)
{
    return u"%1 bytes %2 files %3 folders %4 index %5 depth %6 readable %7 max %8"_s.arg(path)
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
    for (std::size_t i = 0; i < result.folders.size(); ++i)
        lines.append(describe(result.path(int(i)), result.folders[i]));
    for (const diskusage::BiggestFile &file : result.biggestFiles)
        lines.append(
            u"big %1\\%2 %3 %4"_s.arg(file.folder, file.name).arg(file.size).arg(file.lastAccessTime));
    const auto describeType = [&](const FileTypeResult &type) {
        lines.append(u"%1: %2"_s.arg(type.category.name).arg(type.total));
        for (const diskusage::FileRecord &file : type.files)
            lines.append(u"  %1\\%2 %3 %4"_s.arg(result.path(file.folder), file.name)
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
            rows.append(u"big %1 %2 %3"_s.arg(files[i].path).arg(files[i].size).arg(files[i].lastAccess));
        QStringList categories;
        for (const core::FileTypeCategory &category : core::defaultFileTypes())
            categories.append(category.name);
        for (const QString &category : categories + QStringList{u"Other file types"_s}) {
            rows.append(u"%1: %2"_s.arg(category).arg(totals[category]));
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
            own.maxData +=
                u"%1:%2:%3;"_s.arg(children[i].name).arg(children[i].size).arg(int(children[i].kind));
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
             categories.isEmpty() ? QStringList{u"Other file types"_s} : categories) {
            totals[category] += entry.size;
            records[category].append(
                u"  %1\\%2 %3 %4"_s.arg(folder, name).arg(entry.size).arg(entry.lastAccessTime));
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
    const QStringList endings{u".ZIP"_s, u".tar.gz"_s, u".2024.jpg"_s, u".jpg"_s, QString()};
    QRandomGenerator random(seed);
    QStringList folders{root};
    disk.addFolder(root);
    const quint32 sizes = seed % 3 == 0 ? 4U : 1'000'000U; // few sizes: many ties
    const int entries = seed % 5 == 0 ? 20 : 300; // also too few to fill the list of the biggest files
    for (int i = 0; i < entries; ++i) {
        const QString path = folders[random.bounded(int(folders.size()))] + u"\\n%1"_s.arg(i);
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

// Folders to be left out.
void fillExcluded(MemoryEnumerator &disk)
{
    for (const char *path :
         {"Data\\a", "Data\\in\\b", "Database\\c", "x\\Data\\d", "OneDrive\\e", "OneDrive - Work\\f", "g"})
        disk.addFile(u"C:\\r\\"_s + QString::fromLatin1(path), 1);
}

} // namespace

class TestScan : public QObject
{
    Q_OBJECT

private slots:
    void sameAsReference();
    void progress();
    void rootNames();
    void missingRoot();
    void keepsWhatAFolderGaveBeforeItBrokeOff();
    void largeSizes();
    void categories();
    void cycle();
    void cancelled();
    void leavesOut();
    void neverTheRoot();
};

void TestScan::sameAsReference()
{
    for (quint32 seed = 1; seed <= 30; ++seed) {
        MemoryEnumerator disk;
        buildRandomTree(disk, seed);
        const QStringList expected = Reference(disk).scan();
        for (const int threads : poolSizes) {
            const ScanResult result = scan(disk, root, defaultOptions(threads));
            QCOMPARE(describe(result), expected);
            QVERIFY(!result.cancelled);
        }
    }
}

// A step for every direct subfolder, the unreadable one included, and none below. A folder that is left out
// is counted as an entry and as a step to come; nothing more is known of it.
void TestScan::progress()
{
    MemoryEnumerator disk;
    disk.addFile(u"C:\\r\\a\\deep\\f"_s, 1);
    disk.addFile(u"C:\\r\\f"_s, 1);
    disk.addFile(u"C:\\r\\out\\f"_s, 1);
    disk.setUnreadable(u"C:\\r\\b"_s);
    disk.addLink(u"C:\\r\\c"_s, root);
    ScanOptions options;
    options.excludedFolders = {{true, u"C:\\r\\out"_s}};
    ScanRecorder recorder;
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"^exclude path 1: +\"C:.*out\"$"_s));
    const ScanResult result = scan(disk, root, options, recorder);
    QCOMPARE(recorder.events.join(u'|'),
             u"total 5|item 1|entered C:\\r\\a|item 2|item 3|item 4|item 5|item 6|entered C:\\r\\b|item 7|"
             "entered C:\\r\\c"_s);
    QCOMPARE(result.folders[0].folders, 4);
    QCOMPARE(result.excluded, QStringList{u"C:\\r\\out"_s});
}

void TestScan::rootNames()
{
    MemoryEnumerator disk;
    disk.addFile(u"C:\\x\\y\\f"_s, 1);
    disk.addFile(u"C:\\big"_s, 9);
    disk.addFile(u"\\\\host\\share\\z\\f"_s, 1);
    struct Case {
        QString chosen, name, path, childPath;
    };
    for (const Case &c :
         {Case{u"C:\\"_s, u"C:\\"_s, u"C:\\"_s, u"C:\\x"_s},
          {u"C:"_s, u"C:\\"_s, u"C:\\"_s, u"C:\\x"_s},
          {u"C:\\x\\"_s, u"x"_s, u"C:\\x"_s, u"C:\\x\\y"_s},
          {u"C:/x"_s, u"x"_s, u"C:\\x"_s, u"C:\\x\\y"_s},
          {u"\\\\host\\share\\"_s, u"share"_s, u"\\\\host\\share"_s, u"\\\\host\\share\\z"_s}}) {
        const ScanResult result = scan(disk, c.chosen);
        QCOMPARE(result.folders[0].name, c.name);
        QCOMPARE(result.path(0), c.path);
        QCOMPARE(result.path(1), c.childPath);
    }
    QCOMPARE(scan(disk, u"C:"_s).biggestFiles[0].folder, u"C:\\"_s);
}

void TestScan::missingRoot()
{
    MemoryEnumerator disk;
    ScanRecorder recorder;
    const ScanResult result = scan(disk, u"X:\\"_s, defaultOptions(2), recorder);
    QCOMPARE(recorder.events, QStringList{u"total 1"_s});
    QCOMPARE(describe(result).first(), u"X:\\ bytes 0 files 0 folders 0 index 0 depth 0 readable 0 max "_s);
    QCOMPARE(result.unreadable, QStringList{u"X:\\"_s});
}

void TestScan::keepsWhatAFolderGaveBeforeItBrokeOff()
{
    MemoryEnumerator disk;
    disk.addFile(u"C:\\r\\part\\one"_s, 5);
    disk.addFile(u"C:\\r\\whole\\two"_s, 1);
    disk.setBrokenOff(u"C:\\r\\part"_s);
    for (const int threads : {0, 2}) {
        const ScanResult result = scan(disk, u"C:\\r"_s, defaultOptions(threads));
        QCOMPARE(result.readInPart, QStringList{u"C:\\r\\part"_s});
        QCOMPARE(result.unreadable, QStringList());
        QVERIFY(result.folders[1].readable);
        QCOMPARE(result.folders[0].bytes, 6U);
    }
}

void TestScan::largeSizes()
{
    MemoryEnumerator disk;
    const quint64 fiveGibibytes = quint64{5} << 30;
    disk.addFile(u"C:\\r\\a\\five"_s, fiveGibibytes);
    disk.addFile(u"C:\\r\\a\\odd"_s, quint64{1} << 63);
    const ScanResult result = scan(disk, root);
    QCOMPARE(result.folders[0].bytes, fiveGibibytes + (quint64{1} << 63));
    // Children have signed sizes; one that does not fit is not taken for a negative one.
    QCOMPARE(result.folders[1].maxData, u"odd:9223372036854775807:0;five:5368709120:0;"_s);
}

void TestScan::categories()
{
    ScanOptions options;
    options.fileTypes = {{u"off"_s, {u".a"_s, u".b"_s}, false},
                         {u"one"_s, {u".a"_s}, true},
                         {u"two"_s, {u".a"_s, u".c"_s}, true}};
    MemoryEnumerator disk;
    disk.addFile(u"C:\\r\\1.A"_s, 1);
    disk.addFile(u"C:\\r\\2.b"_s, 2);
    disk.addFile(u"C:\\r\\3.c"_s, 4);
    const ScanResult result = scan(disk, root, options);
    QCOMPARE(result.fileTypes.size(), 3U);
    QVERIFY(result.fileTypes[0].files.empty());
    QVERIFY(result.fileTypes[0].category == options.fileTypes[0]);
    QCOMPARE(result.fileTypes[1].total, 1U);
    QCOMPARE(result.fileTypes[2].total, 5U);
    QCOMPARE(result.others.total, 2U);
    QCOMPARE(result.others.category.name, u"Other file types"_s);
    // The file that no category took does not count.
    QList<int> indexes{result.fileTypes[1].files[0].index, result.fileTypes[2].files[0].index,
                       result.fileTypes[2].files[1].index, result.others.files[0].index};
    QCOMPARE(indexes, (QList<int>{0, 1, 2, 0}));
}

void TestScan::cycle()
{
    MemoryEnumerator disk;
    disk.addFile(u"C:\\r\\f"_s, 3);
    disk.addLink(u"C:\\r\\loop"_s, root);
    const ScanResult result = scan(disk, root);
    QCOMPARE(result.folders.size(), 2U);
    QVERIFY(result.folders[1].cycle && result.folders[1].readable && !result.folders[0].cycle);
    QCOMPARE(result.folders[1].index, 0);
    QCOMPARE(result.folders[0].folders, 1);
    QCOMPARE(result.folders[0].bytes, 3U);
    QCOMPARE(result.folders[0].maxData, u"f:3:0;loop:0:1;"_s);
    QCOMPARE(result.unreadable, QStringList());
}

// Wherever a scan is cancelled: its rows are complete, and every total is what its parts add up to.
void TestScan::cancelled()
{
    MemoryEnumerator disk;
    buildRandomTree(disk, 4);
    ScanRecorder whole;
    scan(disk, root, defaultOptions(), whole);
    for (int after = 1; after < whole.events.size(); ++after) {
        ScanRecorder recorder;
        recorder.cancelAfter = after;
        const ScanResult result = scan(disk, root, defaultOptions(poolSizes[after % 3]), recorder);
        QVERIFY(result.cancelled);
        QCOMPARE(result.itemsSeen, int(recorder.events.filter(u"item"_s).size()));
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
    const ScanResult nothing = scan(disk, root, defaultOptions(4), before);
    QVERIFY(nothing.cancelled);
    QVERIFY(nothing.folders.empty());
    QCOMPARE(before.events, QStringList());
}

void TestScan::leavesOut()
{
    // The names of the files that are counted.
    const auto left = [](const char *stored, const char *oneDrive = "") {
        ScanOptions options;
        options.excludedFolders = {*core::parseStoredExcludedFolder(QString::fromLatin1(stored)),
                                   ExcludedFolder{true, QString()}};
        options.excludeOneDrive = true;
        options.oneDriveFolder = QString::fromLatin1(oneDrive);
        MemoryEnumerator disk;
        fillExcluded(disk);
        options.readAheadThreads = 4;
        const ScanResult result = scan(disk, u"C:\\r"_s, options);
        // One may be excluded because reading it hangs or wakes a disk: no thread may touch it.
        for (const QString &excluded : result.excluded)
            if (disk.listed().contains(excluded))
                return u"listed "_s + excluded;
        QString names;
        for (const diskusage::FileRecord &file : result.others.files)
            names += file.name;
        std::sort(names.begin(), names.end());
        return names;
    };
    QCOMPARE(left("0;C:\\r\\Data"), u"abcdefg"_s);
    QCOMPARE(left("1;C:\\r\\Data"), u"defg"_s); // with siblings of the same beginning
    QCOMPARE(left("1;c:\\R\\dATA"), u"defg"_s);
    QCOMPARE(left("1;C:/r/Data"), u"defg"_s);
    QCOMPARE(left("1;C:\\r\\Data\\"), u"acdefg"_s); // only what is in it
    QCOMPARE(left("1;C:\\r\\x\\Data"), u"abcefg"_s);
    QCOMPARE(left("1;C:\\r\\g"), u"abcdefg"_s); // a file's path
    QCOMPARE(left("1;C:\\"), u"g"_s);           // files directly in the root are always counted
    QCOMPARE(left("0;x", "C:\\r\\OneDrive"), u"abcdg"_s);
    QCOMPARE(left("0;x", "C:\\r\\onedrive\\"), u"abcdg"_s);
    QCOMPARE(left("1;C:\\r\\Data", "C:\\r\\OneDrive"), u"dg"_s);
}

void TestScan::neverTheRoot()
{
    ScanOptions options;
    options.excludedFolders = {{true, u"C:\\r\\Data"_s}};
    options.excludeOneDrive = true;
    options.oneDriveFolder = u"C:\\r\\OneDrive"_s;
    MemoryEnumerator disk;
    fillExcluded(disk);
    QCOMPARE(scan(disk, u"C:\\r\\Data"_s, options).folders[0].files, 1);
    const ScanResult cloud = scan(disk, u"C:\\r\\OneDrive"_s, options);
    QCOMPARE(cloud.folders[0].files, 1);
    QVERIFY(cloud.folders[0].inOneDrive);
    // Known as such also where it is not left out.
    options.excludeOneDrive = false;
    const ScanResult all = scan(disk, u"C:\\r"_s, options);
    for (const diskusage::Folder &folder : all.folders)
        QCOMPARE(folder.inOneDrive, folder.name.startsWith(u"OneDrive"));
}

QTEST_GUILESS_MAIN(TestScan)
#include "tst_scan.moc"
