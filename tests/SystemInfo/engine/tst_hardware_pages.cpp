// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Cpu.h"
#include "SystemInfo/engine/Memory.h"
#include "SystemInfo/engine/Pages.h"
#include "SystemInfo/engine/Storage.h"
#include "tests/SystemInfo/engine/Recordings.h"

#include <QTest>

using namespace systeminfo;
using namespace tests;

namespace
{

using Record = void (*)(FakeMachine &);

const Publish ignore = [](const Page &) {};

} // namespace

class HardwarePagesTest : public QObject
{
    Q_OBJECT

private slots:
    void values_data();
    void values();
    void rows();
    void nothingReadable();
    void partitionWalk();
    void texts();
};

void HardwarePagesTest::values_data()
{
    QTest::addColumn<Record>("record");
    QTest::addColumn<PageId>("page");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("text");

    struct Expected {
        const char *name;
        Record record;
        PageId page;
        const char *path;
        const char *text;
    };
    const Record laptop = recordings::laptop, server = recordings::twoSocketServer,
                 guest = recordings::virtualMachine;
    const Expected rows[] = {
        {"speed", laptop, PageId::Cpu, "CPU/Speed", "2.92969 GHz"},
        {"speed, an exact tie", server, PageId::Cpu, "CPU/Speed", "3.51563 GHz"},
        {"speed of a guest", guest, PageId::Cpu, "CPU/Speed", "2.53516 GHz"},
        {"architecture", laptop, PageId::Cpu, "CPU/Architecture", "64-bit"},
        {"first object of the cache query", laptop, PageId::Cpu, "CPU/L1 Cache", "256 KB"},
        {"first level in MB", server, PageId::Cpu, "CPU/L1 Cache", "1 MB"},
        {"no first level", guest, PageId::Cpu, "CPU/L1 Cache", ""},
        {"second level", laptop, PageId::Cpu, "CPU/L2 Cache", "1024 KB"},
        {"third level", laptop, PageId::Cpu, "CPU/L3 Cache", "8 MB"},
        {"third level, small", guest, PageId::Cpu, "CPU/L3 Cache", "512 MB"},
        {"unsigned 32 bits", server, PageId::Cpu, "CPU/L3 Cache", "2097152 MB"},
        {"threads", laptop, PageId::Cpu, "CPU/Threads", "8"},
        {"threads, fewer than cores", server, PageId::Cpu, "CPU/Threads", "24"},
        {"threads, not told", guest, PageId::Cpu, "CPU/Threads", "1"},
        {"VARIANT_TRUE is active", laptop, PageId::Cpu, "CPU/Virtualization", "Active"},
        {"VARIANT_TRUE is supported", laptop, PageId::Cpu, "CPU/Virtual Machine Monitor Extensions",
         "Supported"},
        {"off", guest, PageId::Cpu, "CPU/Virtualization", "Disabled"},
        {"unsupported", guest, PageId::Cpu, "CPU/Virtual Machine Monitor Extensions", "Not supported"},
        {"the last processor wins", server, PageId::Cpu, "CPU/Model", "Xeon B"},
        {"what it does not tell stays", server, PageId::Cpu, "CPU/L2 Cache", "1 MB"},
        {"every socket", server, PageId::Cpu, "Processors/Processor #0", "Xeon A"},
        {"total", laptop, PageId::Memory, "Memory/Total Amount of RAM", "16 GB"},
        {"used", laptop, PageId::Memory, "Memory/Amount of RAM Used", "12 GB"},
        {"exact total", server, PageId::Memory, "Memory/Total Amount of RAM", "16 GB"},
        {"free, rounded up", server, PageId::Memory, "Memory/Amount of Free RAM", "16 GB"},
        {"commit limit", laptop, PageId::Memory, "Memory/Total Amount of Virtual Memory", "18 GB"},
        {"slot", laptop, PageId::Memory, "Memory/RAM Slot", "DIMM A"},
        {"module", laptop, PageId::Memory, "Memory/RAM Slot/Capacity", "16 GB"},
        {"type 0", laptop, PageId::Memory, "Memory/RAM Slot/Type", "Unknown"},
        {"maker", laptop, PageId::Memory, "Memory/RAM Slot/Manufacturer",
         "0x80CE (Samsung Electronics, Inc.)"},
        {"unread serial", laptop, PageId::Memory, "Memory/RAM Slot/Serial Number", ""},
        {"firmware's type", laptop, PageId::Memory,
         "More About the Modules/RAM Slot/Type Reported by the Firmware", "DDR5"},
        {"board", laptop, PageId::Motherboard, "Motherboard/Model", "0KP0FT"},
        {"release date", laptop, PageId::Motherboard, "Motherboard/BIOS Release Date", "Fri Jun 8, 2012"},
        {"disk size", laptop, PageId::Storage, "Storage/Disk #0/Size", "476 GB"},
        {"capabilities", laptop, PageId::Storage, "Storage/Disk #0/Capabilities",
         "Random Access, Supports Writing"},
        {"no date", laptop, PageId::Storage, "Storage/Disk #0/Install Date", ""},
        {"no", laptop, PageId::Storage, "Storage/Disk #0/Needs Cleaning", "No"},
        {"not told", laptop, PageId::Storage, "Storage/Disk #0/Power Management Supported", ""},
        {"numbered over matched links", laptop, PageId::Storage, "Storage/Disk #0/Partition #0", "C:"},
        {"free space", laptop, PageId::Storage, "Storage/Disk #0/Partition #0/Free Space", "100 GB"},
        {"quotas", laptop, PageId::Storage, "Storage/Disk #0/Partition #0/Supports Disk Quotas", "Yes"},
    };
    for (const Expected &row : rows)
        QTest::newRow(row.name) << row.record << row.page << QString::fromLatin1(row.path)
                                << QString::fromLatin1(row.text);
}

void HardwarePagesTest::values()
{
    QFETCH(Record, record);
    QFETCH(PageId, page);
    QFETCH(QString, path);
    QFETCH(QString, text);
    FakeMachine machine;
    record(machine);
    QCOMPARE(textAt(pageSource(page).gather(machine, ignore), path), text);
}

// The rows that other programs look for, in their order.
void HardwarePagesTest::rows()
{
    FakeMachine machine;
    recordings::laptop(machine);
    const auto page = [&machine](PageId id) { return pageSource(id).gather(machine, ignore); };
    QCOMPARE(
        labels(page(PageId::Cpu).sections[0]).join(u'|'),
        QStringLiteral("Model|Family|Manufacturer|SocketDescription|Architecture|Speed|L1 Cache|L2 Cache|"
                       "L3 Cache|Cores|Threads|Virtualization|Virtual Machine Monitor Extensions|Unique ID"));
    const Page memory = page(PageId::Memory);
    QCOMPARE(
        labels(memory.sections[0]).join(u'|'),
        QStringLiteral("Total Amount of RAM|Amount of RAM Used|Amount of Free RAM|Total Amount of Virtual "
                       "Memory|Amount of Free Virtual Memory|RAM Slot|RAM Slot"));
    QCOMPARE(labels(memory.sections[0].children[5]).join(u'|'),
             QStringLiteral("Type|Part Number|Serial Number|Speed|Capacity|Manufacturer"));
    QCOMPARE(
        labels(page(PageId::Motherboard).sections[0]).join(u'|'),
        QStringLiteral("Model|Manufacturer|Serial Number|Version|BIOS Name|BIOS Manufacturer|BIOS Version|"
                       "BIOS Serial Number|BIOS Release Date"));
    const Row disk = page(PageId::Storage).sections[0].children[0];
    QCOMPARE(labels(disk).join(u'|'),
             QStringLiteral(
                 "Device ID|Partition #0|Compression Method|Capabilities|Firmware Revision|Install Date|"
                 "Manufacturer|Media Type|Model|Name|Needs Cleaning|Power Management Supported|Serial "
                 "Number|Size|Status|Total Cylinders|Total Heads|Total Sectors|Bytes Per Sector|Total "
                 "Tracks|Tracks Per Cylinder"));
    QCOMPARE(labels(disk.children[1]).join(u'|'),
             QStringLiteral(
                 "Volume Name|Volume Serial Number|File System|Compressed|Supports Disk Quotas|Supports "
                 "File Based Compression|Free Space|Size"));
}

void HardwarePagesTest::nothingReadable()
{
    for (const PageSource &source : pageSources()) {
        FakeMachine machine;
        int published = 0;
        const Page page = source.gather(machine, [&published](const Page &) { ++published; });
        QVERIFY2(!page.sections.empty(), source.title);
        QVERIFY2(published > 0, source.title);
    }
    FakeMachine machine;
    const Page cpu = cpuPage(machine, ignore);
    QCOMPARE(cpu.sections[0].children.size(), 14u);
    QCOMPARE(textAt(cpu, QStringLiteral("CPU/Speed")), QString());
    QCOMPARE(cpu.notices.size(), 2); // one for each query
    QCOMPARE(machine.fakeWmi.asked.size(), 2);
}

void HardwarePagesTest::partitionWalk()
{
    // Backslashes are doubled in a key; a server that refuses that is asked with the plain form.
    QCOMPARE(*partitionsOfDisk(QStringLiteral("\\\\.\\PHYSICALDRIVE0"), true),
             QStringLiteral("Associators of {Win32_DiskDrive.DeviceID='\\\\\\\\.\\\\PHYSICALDRIVE0'} where "
                            "AssocClass=Win32_DiskDriveToDiskPartition"));
    FakeMachine plain;
    recordings::laptop(plain);
    auto &answers = plain.fakeWmi.answers;
    const QString doubled = QStringLiteral(
        "DeviceID='\\\\\\\\.\\\\PHYSICALDRIVE0'} where AssocClass=Win32_DiskDriveToDiskPartition");
    answers[QStringLiteral("DeviceID='\\\\.\\PHYSICALDRIVE0'}")] = answers.take(doubled);
    QCOMPARE(textAt(storagePage(plain, ignore), QStringLiteral("Storage/Disk #0/Partition #0")),
             QStringLiteral("C:"));
    // An id too short for a name counts as a failed query.
    FakeMachine guest;
    recordings::virtualMachine(guest);
    const Page page = storagePage(guest, ignore);
    QCOMPARE(guest.fakeWmi.failures, QStringList{QStringLiteral("Query for processes failed.")});
    QCOMPARE(textAt(page, QStringLiteral("Storage/Disk #0")), QStringLiteral("Virtual"));
}

// The tables, where the recordings above do not go.
void HardwarePagesTest::texts()
{
    QCOMPARE(secondLevelCache(2048).text, QStringLiteral("2 MB"));
    for (const auto &[kilobytes, text] :
         {std::pair<quint64, const char *>(1024, "1024 MB"), {1025, "1 MB"}, {0, "0 MB"}})
        QCOMPARE(thirdLevelCache(kilobytes).text, QString::fromLatin1(text));
    const std::pair<qint64, const char *> types[] = {
        {-1, "Other"}, {1, "Other"}, {2, "DRAM"},  {19, "RDRAM"}, {20, "DDR"},  {22, "DDR2 FB-DIMM"},
        {23, "Other"}, {24, "DDR3"}, {25, "FBD2"}, {26, "DDR4"},  {27, "Other"}};
    for (const auto &[type, text] : types)
        QCOMPARE(memoryTypeText(type), QString::fromLatin1(text));
    for (const char *unchanged : {"0x80ce", "80CE", "0x802C000080AD", ""})
        QCOMPARE(memoryMaker(QString::fromLatin1(unchanged)), QString::fromLatin1(unchanged));
    QCOMPARE(memoryMaker(QStringLiteral("0xAD00")), QStringLiteral("0xAD00 (Hynix Semiconductor Inc.)"));
}

QTEST_APPLESS_MAIN(HardwarePagesTest)
#include "tst_hardware_pages.moc"
