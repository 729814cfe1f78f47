// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/DiskUsage/engine/ScanRecorder.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using core::ExcludedFolder;
using diskusage::ScanOptions;
using diskusage::ScanResult;
using tests::MemoryEnumerator;

class TestScanExclusions : public QObject
{
    Q_OBJECT

private slots:
    void leavesOut();
    void countersAndProgress();
    void neverTheRoot();
    void excludedFoldersAreNeverListed();
};

namespace
{

void fill(MemoryEnumerator &disk)
{
    for (const char *path :
         {"Data\\a", "Data\\in\\b", "Database\\c", "x\\Data\\d", "OneDrive\\e", "OneDrive - Work\\f", "g"})
        disk.addFile(u"C:\\r\\"_s + QString::fromLatin1(path), 1);
}

} // namespace

void TestScanExclusions::leavesOut()
{
    // The names of the files that are counted.
    const auto left = [](const char *stored, const char *oneDrive = "") {
        ScanOptions options;
        options.excludedFolders = {*core::parseStoredExcludedFolder(QString::fromLatin1(stored)),
                                   ExcludedFolder{true, QString()}};
        options.excludeOneDrive = true;
        options.oneDriveFolder = QString::fromLatin1(oneDrive);
        MemoryEnumerator disk;
        fill(disk);
        const ScanResult result = scan(disk, u"C:\\r"_s, options);
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

// An excluded folder is met and counted as an entry and as a step to come; nothing more is known of it.
void TestScanExclusions::countersAndProgress()
{
    MemoryEnumerator disk;
    disk.addFile(u"C:\\r\\one"_s, 1);
    for (int i = 0; i < 100; ++i)
        disk.addFile(u"C:\\r\\out\\f%1"_s.arg(i), 1);
    disk.addFile(u"C:\\r\\two"_s, 1);
    ScanOptions options;
    options.excludedFolders = {{true, u"C:\\r\\out"_s}};
    tests::ScanRecorder recorder;
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"^exclude path 1: +\"C:.*out\"$"_s));
    const ScanResult result = scan(disk, u"C:\\r"_s, options, recorder);
    QCOMPARE(recorder.events.join(u'|'), u"total 2|item 1|item 2|item 3"_s);
    QCOMPARE(result.folders.size(), 1U);
    QCOMPARE(result.folders[0].files, 2);
    QCOMPARE(result.folders[0].folders, 0);
    QCOMPARE(result.excluded, QStringList{u"C:\\r\\out"_s});
}

void TestScanExclusions::neverTheRoot()
{
    ScanOptions options;
    options.excludedFolders = {{true, u"C:\\r\\Data"_s}};
    options.excludeOneDrive = true;
    options.oneDriveFolder = u"C:\\r\\OneDrive"_s;
    MemoryEnumerator disk;
    fill(disk);
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

// A folder may be excluded because reading it hangs or wakes a disk: no thread may touch it.
void TestScanExclusions::excludedFoldersAreNeverListed()
{
    ScanOptions options;
    options.excludedFolders = {{true, u"C:\\r\\Data"_s}};
    options.excludeOneDrive = true;
    options.oneDriveFolder = u"C:\\r\\OneDrive"_s;
    options.readAheadThreads = 4;
    for (int round = 0; round < 20; ++round) {
        MemoryEnumerator disk;
        fill(disk);
        scan(disk, u"C:\\r"_s, options);
        QStringList listed = disk.listed();
        listed.sort();
        QCOMPARE(listed.join(u'|'), u"C:\\r|C:\\r\\x|C:\\r\\x\\Data"_s);
    }
}

QTEST_GUILESS_MAIN(TestScanExclusions)
#include "tst_scan_exclusions.moc"
