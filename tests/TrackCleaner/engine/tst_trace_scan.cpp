// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/TrackCleaner/engine/TraceWorld.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tests;
using namespace tracks;

namespace
{

QString at(const QString &folder, const QString &name)
{
    return folder + u'\\' + name;
}

} // namespace

class TraceScanTest : public QObject
{
    Q_OBJECT

private slots:
    void itemsInOrder();
    void recentFilesAreTheDirectFilesOfThreeFolders();
    void logFiles();
    void databases_data();
    void databases();
    void filesUsedToday();
    void linksAreNotEntered();
    void rights();
    void temporaryFolders_data();
    void temporaryFolders();
    void cancelledWithinAnItem();
    void valueTexts();
};

void TraceScanTest::itemsInOrder()
{
    TraceWorld world;
    world.registry.keys[explorer + u"\\RunMRU"_s] = {textValue(u"a"_s, u"cmd\\1"_s),
                                                     textValue(u"MRUList"_s, u"a"_s)};
    world.registry.keys[explorer + u"\\WordWheelQuery"_s] = {textValue({}, u"set default"_s)};
    world.disk.addFile(u"C:\\ProgramData\\Microsoft\\Windows\\WER\\ReportArchive\\r\\Report.wer"_s, 5);
    world.disk.addFile(u"C:\\Windows\\System32\\sru\\SRUDB.dat"_s, quint64{5} << 30);
    // The log of the network data is part of what is cleared there; nothing else is needed of it.
    world.disk.addFile(u"C:\\Windows\\System32\\sru\\SRU.chk"_s, 1);
    world.disk.addFile(u"C:\\Windows\\System32\\sru\\SRU00001.log"_s, 1);
    const ScanResult found = world.scan({Item::NetworkData, Item::RunDialog, Item::TypedPaths,
                                         Item::SearchHistory, Item::ErrorReporting, Item::TempFiles});
    QCOMPARE(world.told, QStringList({u"1:0"_s, u"2:1"_s, u"3:2"_s, u"5:1"_s, u"6:3"_s, u"7:0"_s}));
    QCOMPARE(found[Item::NetworkData].bytes, (quint64{5} << 30) + 2);
    QVERIFY(!rowsOf(found[Item::NetworkData]).join(u'\n').contains(u'!'));
    QVERIFY(!found[Item::LogFiles].scanned);
    QCOMPARE(found[Item::TempFiles].obstacle, Obstacle::None);
}

void TraceScanTest::recentFilesAreTheDirectFilesOfThreeFolders()
{
    TraceWorld world;
    world.disk.addFile(recent + u"\\a.lnk"_s, 1);
    world.disk.addFile(recent + u"\\other\\below.lnk"_s, 1);
    world.disk.addFile(recent + u"\\AutomaticDestinations\\x.automaticDestinations-ms"_s, 1);
    world.disk.addFile(recent + u"\\CustomDestinations\\y.customDestinations-ms"_s, 1);
    world.registry.keys[explorer + u"\\RecentDocs"_s] = {binaryValue(u"0"_s, utf16(u"a.txt"_s))};
    world.registry.keys[explorer + u"\\RecentDocs\\.txt"_s] = {binaryValue(u"0"_s, utf16(u"a.txt"_s))};
    QCOMPARE(rowsOf(world.scan({Item::RecentFiles})[Item::RecentFiles]),
             QStringList({recent + u"\\AutomaticDestinations\\x.automaticDestinations-ms"_s,
                          recent + u"\\CustomDestinations\\y.customDestinations-ms"_s, recent + u"\\a.lnk"_s,
                          u"HKEY_CURRENT_USER\\"_s + explorer + u"\\RecentDocs\\0"_s,
                          u"HKEY_CURRENT_USER\\"_s + explorer + u"\\RecentDocs\\.txt\\0"_s}));
}

void TraceScanTest::logFiles()
{
    TraceWorld world;
    const QString local = profile + u"\\AppData\\Local\\Microsoft"_s;
    // The pattern of the system would take the second and third too, by their short names.
    for (const char *name : {"a.LOG", "b.log1", "c.logbook", "sub\\d.log", "folder.log\\e.log", ".log"})
        world.disk.addFile(at(local, QString::fromLatin1(name)), 10);
    world.disk.addFile(u"C:\\Windows\\setup.log"_s, 3);
    world.disk.addFile(profile + u"\\AppData\\Local\\Other\\f.log"_s, 3);
    const ScanResult found = world.scan({Item::LogFiles});
    QCOMPARE(rowsOf(found[Item::LogFiles]),
             QStringList({u"C:\\Windows\\setup.log"_s, local + u"\\a.LOG"_s, local + u"\\sub\\d.log"_s,
                          local + u"\\folder.log\\e.log"_s, local + u"\\.log"_s}));
    QCOMPARE(found[Item::LogFiles].bytes, 43);
}

void TraceScanTest::databases_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("kept");
    const auto row = [](const char *what, const char *names, const char *kept) {
        QTest::newRow(what) << QString::fromLatin1(names).split(u' ') << QString::fromLatin1(kept);
    };
    row("LevelDB", "000003.log CURRENT MANIFEST-000001 LOG 5.ldb photo.jpg",
        "000003.log CURRENT MANIFEST-000001 LOG 5.ldb");
    row("numbers alone are no LevelDB", "000003.log CURRENT", "");
    row("numbers beside another database", "000003.log CURRENT MSS.chk", "MSS.chk");
    row("manifest met last", "000003.log CURRENT x.txt manifest-000001",
        "000003.log CURRENT manifest-000001");
    row("ESE by its checkpoint", "MSS00012.log MSS.chk MSSres00001.jrs Windows.edb notes.log",
        "MSS00012.log MSS.chk MSSres00001.jrs Windows.edb");
    row("ESE of Windows, whatever lies beside it", "edb.log EDB0001A.LOG V01.log V01tmp.log v02.log",
        "edb.log EDB0001A.LOG V01.log V01tmp.log");
    row("hive", "NTUSER.DAT ntuser.dat.LOG ntuser.dat.LOG1 other.log",
        "NTUSER.DAT ntuser.dat.LOG ntuser.dat.LOG1");
    row("a longer checkpoint name is another program's", "FOUND.chk FOUND.log", "");
}

void TraceScanTest::databases()
{
    QFETCH(QStringList, names);
    QFETCH(QString, kept);
    TraceWorld world;
    for (const QString &name : names)
        world.disk.addFile(at(temp + u"\\x"_s, name), 1);
    // A neighbour's signs tell nothing about this folder, nor do those of a folder below.
    world.disk.addFile(temp + u"\\x\\below\\CURRENT"_s, 1);
    world.disk.addFile(temp + u"\\x\\below\\MANIFEST-1"_s, 1);
    QStringList found;
    for (const QString &row : rowsOf(world.scan({Item::TempFiles})[Item::TempFiles])) {
        if (row.endsWith(u'!') && !row.contains(u"below"))
            found.append(row.sliced(temp.size() + 3).chopped(1));
    }
    QCOMPARE(found.join(u' '), kept);
    world.disk.addFile(temp + u"\\half\\000003.log"_s, 1);
    world.disk.setBrokenOff(temp + u"\\half"_s); // before the names that tell
    QVERIFY(rowsOf(world.scan({Item::TempFiles})[Item::TempFiles]).contains(temp + u"\\half\\000003.log!"_s));

    world.disk.addFile(u"C:\\Windows\\System32\\config\\SYSTEM.LOG"_s, 1);
    QCOMPARE(rowsOf(world.scan({Item::LogFiles})[Item::LogFiles]),
             QStringList(u"C:\\Windows\\System32\\config\\SYSTEM.LOG!"_s));
}

void TraceScanTest::filesUsedToday()
{
    const quint64 day = 24 * TraceWorld::hour;
    const auto scan = [&](bool keep) {
        TraceWorld world;
        world.options.keepUsedToday = keep;
        world.disk.addFile(temp + u"\\old"_s, 1, TraceWorld::now - day);
        world.disk.addFile(temp + u"\\young"_s, 1, TraceWorld::now - day + 1);
        world.disk.addFile(temp + u"\\copied"_s, 1, 5, 0, TraceWorld::now - 1);
        world.disk.addFile(temp + u"\\clock was wrong"_s, 1, TraceWorld::now + day);
        world.disk.addFile(u"C:\\Windows\\young.log"_s, 1, TraceWorld::now);
        const ScanResult found = world.scan({Item::TempFiles, Item::LogFiles});
        return rowsOf(found[Item::LogFiles]) + rowsOf(found[Item::TempFiles]);
    };
    QCOMPARE(scan(true), QStringList({u"C:\\Windows\\young.log"_s, temp + u"\\old"_s, temp + u"\\young~"_s,
                                      temp + u"\\copied~"_s, temp + u"\\clock was wrong~"_s}));
    QCOMPARE(scan(false).filter(u"~"_s), QStringList());
}

void TraceScanTest::linksAreNotEntered()
{
    TraceWorld world;
    world.disk.addFile(u"D:\\Documents\\letter.log"_s, 1);
    for (const quint32 tag : {MemoryEnumerator::mountPointTag, MemoryEnumerator::symbolicLinkTag, 0U})
        world.disk.addLink(QStringLiteral("%1\\link%2").arg(temp).arg(tag), u"D:\\Documents"_s, tag);
    core::DirectoryEntry link;
    link.attributes = core::AttributeReparsePoint;
    link.reparseTag = MemoryEnumerator::symbolicLinkTag;
    world.disk.addEntry(temp + u"\\link.txt"_s, link);
    world.disk.addLink(recent, u"D:\\Documents"_s);
    world.behindLinks.insert(recent);
    const ScanResult found = world.scan({Item::RecentFiles, Item::TempFiles});
    QCOMPARE(rowsOf(found[Item::TempFiles]), QStringList());
    QCOMPARE(rowsOf(found[Item::RecentFiles]), QStringList());
    QCOMPARE(found[Item::RecentFiles].obstacle, Obstacle::ThroughLink);
}

void TraceScanTest::rights()
{
    TraceWorld world;
    world.disk.addFile(u"C:\\Windows\\CBS.log"_s, 1);
    world.disk.addFile(u"C:\\Windows\\own.log"_s, 1);
    world.foreign.insert(u"C:\\Windows\\CBS.log"_s);
    world.disk.addFolder(u"C:\\Windows\\closed"_s);
    world.disk.setUnreadable(u"C:\\Windows\\closed"_s);
    world.disk.addFolder(u"C:\\Windows\\System32\\sru"_s);
    world.disk.setUnreadable(u"C:\\Windows\\System32\\sru"_s);
    const ScanResult found = world.scan({Item::LogFiles, Item::ErrorReporting, Item::NetworkData});
    QCOMPARE(rowsOf(found[Item::LogFiles]),
             QStringList({u"C:\\Windows\\CBS.log#"_s, u"C:\\Windows\\own.log"_s}));
    QCOMPARE(found[Item::LogFiles].unreadableFolders, 2);
    QCOMPARE(found[Item::NetworkData].obstacle, Obstacle::NeedsAdministrator);
    // There is no such folder on this computer, and nothing to say about it.
    QCOMPARE(found[Item::ErrorReporting].obstacle, Obstacle::None);
}

void TraceScanTest::temporaryFolders_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("target");
    QTest::addColumn<Obstacle>("obstacle");
    const auto row = [](const char *folder, const char *target, Obstacle obstacle) {
        QTest::newRow(
            qPrintable(QStringLiteral("%1 -> %2").arg(QLatin1String(folder), QLatin1String(target))))
            << QString::fromLatin1(folder) << QString::fromLatin1(target) << obstacle;
    };
    row("D:\\TMP", "D:\\TMP", Obstacle::None);
    row("C:\\Windows\\Temp", "C:\\Windows\\Temp", Obstacle::None);
    row("", "", Obstacle::TempUnknown);
    row("D:", "D:", Obstacle::TempDriveRoot);
    row("\\\\server\\temp", "\\\\server\\temp", Obstacle::TempDriveRoot);
    row("c:\\users", "c:\\users", Obstacle::TempHoldsSystem);
    row("C:\\Users\\Ann", "C:\\Users\\Ann", Obstacle::TempHoldsSystem);
    row("C:\\WINDOWS", "C:\\WINDOWS", Obstacle::TempHoldsSystem);
    row("D:\\Templates", "D:\\Templates", Obstacle::TempNotTemporary);
    row("C:\\Temp", "D:\\Documents", Obstacle::TempNotTemporary);
}

void TraceScanTest::temporaryFolders()
{
    QFETCH(QString, folder);
    QFETCH(QString, target);
    QFETCH(Obstacle, obstacle);
    TraceWorld world;
    world.options.locations.temporary = folder;
    world.options.locations.temporaryTarget = target;
    world.disk.addFile(at(folder, u"file"_s), 1);
    const ScanResult found = world.scan({Item::TempFiles});
    QCOMPARE(found[Item::TempFiles].obstacle, obstacle);
    QCOMPARE(found[Item::TempFiles].count(), obstacle == Obstacle::None ? 1U : 0U);
}

void TraceScanTest::cancelledWithinAnItem()
{
    TraceWorld world;
    world.disk.addFile(u"C:\\Windows\\a.log"_s, 1);
    for (int i = 0; i < 5; ++i)
        world.disk.addFile(QStringLiteral("%1\\%2").arg(temp).arg(i), 1);
    world.cancelAfter = 3;
    const ScanResult found = world.scan({Item::LogFiles, Item::TempFiles});
    QCOMPARE(world.told, QStringList(u"4:1"_s));
    QCOMPARE(found[Item::TempFiles].count(), 2U);
    QVERIFY(!found[Item::TempFiles].scanned);
}

void TraceScanTest::valueTexts()
{
    QCOMPARE(valueText(Item::RunDialog, textValue(u"a"_s, u"cmd /k dir\\1"_s)), u"cmd /k dir"_s);
    QCOMPARE(valueText(Item::TypedPaths, textValue(u"url1"_s, u"C:\\1"_s)), u"C:\\1"_s);
    QCOMPARE(valueText(Item::SearchHistory, binaryValue(u"0"_s, utf16(u"tax"_s) + "x")), u"tax"_s);
    QCOMPARE(valueText(Item::RecentFiles, binaryValue(u"3"_s, utf16(u"a.txt"_s) + "\x01\x02")), u"a.txt"_s);
    QCOMPARE(valueText(Item::SearchHistory, binaryValue(u"MRUListEx"_s, utf16(u"no text"_s))), QString());
    QCOMPARE(valueText(Item::RunDialog, textValue(u"MRUList"_s, u"a"_s)), QString());
    QCOMPARE(valueText(Item::TypedPaths, binaryValue(u"url1"_s, "\x01")), QString());
}

QTEST_GUILESS_MAIN(TraceScanTest)
#include "tst_trace_scan.moc"
