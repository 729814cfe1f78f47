// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Devices.h"
#include "SystemInfo/engine/DriveDetails.h"
#include "SystemInfo/engine/Edid.h"
#include "SystemInfo/engine/General.h"
#include "SystemInfo/engine/Pages.h"
#include "SystemInfo/engine/Startup.h"
#include "SystemInfo/engine/TaskXml.h"
#include "SystemInfo/engine/Tasks.h"
#include "tests/SystemInfo/engine/FakeMachine.h"

#include <QTest>

using namespace systeminfo;
using namespace tests;

namespace
{

const Publish ignore = [](const Page &) {};

QString t(const char *text)
{
    return QString::fromUtf8(text);
}

// 128 bytes as a 4K monitor has them, checksum included.
QByteArray monitorBytes()
{
    QByteArray bytes = QByteArray::fromHex("00ffffffffffff0010acd0a0000000000a1d0104b53c2278");
    bytes.resize(54, '\0');
    // 3840 x 2160, blanking 160 and 62, 533.25 MHz, 596 x 335 mm
    bytes += QByteArray::fromHex("4dd000a0f0703e803020350055502100001a");
    bytes += QByteArray::fromHex("000000fc0044454c4c205532373230510a20");
    bytes += QByteArray::fromHex("000000ff005a313233340a20202020202020");
    bytes.resize(127, '\0');
    int sum = 0;
    for (const char byte : bytes)
        sum += static_cast<quint8>(byte);
    return bytes + static_cast<char>(256 - sum % 256);
}

} // namespace

class GeneralPageTest : public QObject
{
    Q_OBJECT

private slots:
    void sections();
    void power();
    void processorSpeed();
    void volumesAndAdapters();
    void videoAdapter();
    void devices();
    void monitorIdentity();
    void windowsNames();
    void environment();
    void startupItems();
    void programs();
    void triggers();
    void taskTexts();
    void driveBytes();
};

void GeneralPageTest::sections()
{
    FakeMachine machine;
    QStringList titles;
    for (const Row &row : generalPage(machine, ignore).sections)
        titles << row.label;
    QCOMPARE(
        titles.join(u'|'),
        t("Operating System|CPU|Memory|Video Adapter|Screen Resolution|Monitor|Logical "
          "Storage Device|Power|Network Adapter|Printer|Mouse|Keyboard|Network Connections|Graphics Memory"));
}

void GeneralPageTest::power()
{
    const QString mark = QChar(u'\uFFFD');
    const QMap<int, QString> texts = {
        {0, {}},
        {1, t("High") + mark + t("the battery capacity is at more than 66 percent")},
        {2, t("Low") + mark + t("the battery capacity is at less than 33 percent")},
        {4, t("Critical") + mark + t("the battery capacity is at less than five percent")},
        {8, t("Charging")},
        {128, t("No system battery")},
        {136, t("No system battery")},
        {255, t("Unknown status") + mark + t("unable to read the battery flag information")}};
    for (auto i = texts.cbegin(); i != texts.cend(); ++i) {
        const Row row = powerRow({.read = true, .batteryFlag = static_cast<quint8>(i.key())});
        QCOMPARE(row.children[1].value.text, i.value());
    }
    const Row known = powerRow(
        {.read = true, .acLine = 1, .lifePercent = 85, .lifeSeconds = 5400, .fullLifeSeconds = 7200});
    QCOMPARE(known.children[0].value.text, t("Online"));
    QCOMPARE(known.children[2].value.text, t("85%"));
    QCOMPARE(known.children[3].value.text, t("5400 seconds"));
    const Row unknown = powerRow({.read = true, .acLine = 9});
    for (const std::size_t i : {0u, 2u, 3u, 4u})
        QCOMPARE(unknown.children[i].value.text, t("Unknown status"));
}

void GeneralPageTest::processorSpeed()
{
    for (const auto &[megahertz, text] :
         {std::pair(3000u, "3 GHz"), {2592u, "2.592 GHz"}, {2596u, "2.596 GHz"}}) {
        FakeRegistry registry;
        registry.set(t("hklm\\HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0"), t("~MHz"),
                     core::RegistryValue::ofNumber(megahertz));
        QCOMPARE(processorRow(registry).children[2].value.text, t(text));
    }
}

void GeneralPageTest::volumesAndAdapters()
{
    FakeMachine machine;
    machine.memoryStatus.totalPhysical = quint64(15.8 * (1 << 30));
    machine.volumes = {{t("C:\\"), {}, 255411105792, 107503017984}, {t("E:\\"), t("Data"), 0, 0}};
    machine.adapterList = {
        {t("Fast card"), 6, t("10.0.0.2")}, {t("Loop"), 24, {}}, {t("Radio"), 71, t("0.0.0.0")}};
    machine.graphicsList = {{t("Card"), quint64(8) << 30, quint64(1536) << 20}};
    machine.facts = {.major = 10, .build = 22631, .uptimeSeconds = 3599};
    Page page = generalPage(machine, ignore);
    QCOMPARE(textAt(page, t("Graphics Memory/Card/Dedicated Memory")), t("8 GB"));
    QCOMPARE(textAt(page, t("Graphics Memory/Card/Shared Memory")), t("1536 MB"));
    QCOMPARE(textAt(page, t("Memory/Physical Memory")), t("15 GB")); // truncated here
    QCOMPARE(textAt(page, t("Logical Storage Device/Local Disk (C:)")), t("237.87 GB (100.12 GB free)"));
    QVERIFY(rowAt(page.sections, t("Logical Storage Device/Data (E:)")));
    QCOMPARE(textAt(page, t("Network Adapter/Adapter #0/Type")), t("Ethernet"));
    QCOMPARE(textAt(page, t("Network Adapter/Adapter #1/Type")), t("Lookback"));
    QCOMPARE(textAt(page, t("Network Adapter/Adapter #2/Type")), t("Other"));
    QCOMPARE(page.summary, t("A computer with 16 GB of memory and 237 GB of disk space, running Windows 11 "
                             "for 59 minutes."));
    QVERIFY(updateUptime(page, 3599).empty());
    QCOMPARE(updateUptime(page, 3600), (std::vector<int>{0, 10}));
    QCOMPARE(textAt(page, t("Operating System/Windows Uptime")), t("1 hour"));
    QVERIFY(page.summary.endsWith(t("for 1 hour.")));
}

void GeneralPageTest::videoAdapter()
{
    FakeRegistry registry;
    const QString key = t("hklm\\SYSTEM\\CurrentControlSet\\Control\\Video\\{1}\\0000");
    for (const char *output : {"\\DEVICE\\VIDEO0", "\\Device\\Video1"})
        registry.set(t("hklm\\HARDWARE\\DEVICEMAP\\VIDEO"), t(output),
                     t("\\Registry\\Machine\\System\\CurrentControlSet\\Control\\Video\\{1}\\0000"));
    registry.set(key, t("DriverDesc"), t("Card"));
    core::RegistryValue binary = core::RegistryValue::ofText(t("Card chip"));
    binary.type = core::RegistryValue::binary;
    registry.set(key, t("HardwareInformation.ChipType"), binary);
    registry.set(key, t("HardwareInformation.MemorySize"), core::RegistryValue::ofNumber(0x60000000));
    const std::vector<Row> rows = videoAdapterRows(registry);
    QCOMPARE(rows.size(), 1u); // two outputs of one adapter
    QCOMPARE(rows[0].value.text, t("Card"));
    QCOMPARE(rows[0].children[2].value.text, t("Card chip"));
    QCOMPARE(rows[0].children[7].value.text, t("1536 MB"));
    // The 64-bit size comes first.
    registry.set(key, t("HardwareInformation.qwMemorySize"),
                 {core::RegistryValue::qword, QByteArray::fromHex("0000000002000000")});
    QCOMPARE(videoAdapterRows(registry)[0].children[7].value.text, t("8 GB"));
}

void GeneralPageTest::devices()
{
    FakeMachine machine;
    const auto add = [&machine](const char *id, const char *service, const char *text) {
        const QString key = t("hklm\\SYSTEM\\CurrentControlSet\\Enum\\") + t(id);
        machine.fakeRegistry.set(key, t("Service"), t(service));
        machine.fakeRegistry.set(key, t("DeviceDesc"), t(text));
    };
    add("HID\\VID_1\\a", "mouhid", "@msmouse.inf,%hid%;HID-compliant mouse");
    add("HID\\VID_2\\b", "mouhid", "Old mouse");
    add("HID\\VID_3\\c", "kbdhid", "Keyboard");
    machine.presentDevices = {t("HID\\VID_1\\a")};
    const Row mice = mouseRow(machine);
    QCOMPARE(labels(mice), QStringList{t("HID-compliant mouse")}); // the other one is gone
    QCOMPARE(keyboardRow(machine).children[0].value.text, t("not connected"));
}

void GeneralPageTest::monitorIdentity()
{
    const auto monitor = readEdid(monitorBytes());
    QVERIFY(monitor);
    QCOMPARE(monitor->maker, t("DEL"));
    QCOMPARE(monitor->name, t("DELL U2720Q"));
    QCOMPARE(monitor->serialNumber, t("Z1234"));
    QCOMPARE(monitor->nativeSize, QSize(3840, 2160));
    QCOMPARE(qRound(monitor->refreshRate), 60);
    QCOMPARE(monitor->imageMillimetres, QSize(597, 336));
    QCOMPARE(monitor->year, 2019);
    QByteArray damaged = monitorBytes();
    damaged[70] = 1;
    QVERIFY(!readEdid(damaged));
    QVERIFY(!readEdid(monitorBytes().left(127)));
}

void GeneralPageTest::windowsNames()
{
    FakeRegistry registry;
    const QString key = t("hklm\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion");
    registry.set(key, t("ProductName"), t("Windows 10 Pro")); // what Windows 11 says as well
    registry.set(key, t("DisplayVersion"), t("23H2"));
    registry.set(key, t("UBR"), core::RegistryValue::ofNumber(3007));
    const WindowsRelease release = windowsRelease({.major = 10, .build = 22631}, registry);
    QCOMPARE(release.name + u'|' + release.edition + u'|' + release.version + u'|' + release.build,
             t("Windows 11|Pro|10.0 (23H2)|22631.3007"));
    QCOMPARE(windowsRelease({.major = 10, .build = 19045}, registry).name, t("Windows 10"));
    registry.set(key, t("ProductName"), t("Windows Server 2022 Standard"));
    QCOMPARE(windowsRelease({.major = 10, .build = 20348}, registry).edition, t("Standard"));
}

void GeneralPageTest::environment()
{
    FakeMachine machine;
    machine.existingPaths = {t("C:\\Windows"), t("C:\\Tools")};
    machine.fakeRegistry.set(t("hkcu\\Environment"), t("Path"),
                             t("%SystemRoot%;\"C:\\Tools\";C:\\Gone;c:\\windows\\;"));
    machine.fakeRegistry.set(t("hkcu\\Environment"), t("SERVICE_TOKEN"), t("a;b"));
    const Page page = environmentPage(machine, ignore);
    const Row *secret = rowAt(page.sections, t("User Variables/SERVICE_TOKEN"));
    QVERIFY(secret && secret->privacy == Privacy::Secret && secret->children.empty());
    const Row *path = rowAt(page.sections, t("User Variables/Path"));
    QVERIFY(path);
    QCOMPARE(labels(*path).join(u'|'), t("%SystemRoot%|C:\\Tools|C:\\Gone|c:\\windows\\"));
    QCOMPARE(path->children[0].value.text, t("C:\\Windows"));
    QCOMPARE(path->children[1].problem, QString());
    QCOMPARE(path->children[2].problem, t("does not exist"));
}

void GeneralPageTest::startupItems()
{
    FakeMachine machine;
    machine.existingPaths = {t("C:\\Program Files\\Chat\\chat.exe")};
    const QString run = t("Software\\Microsoft\\Windows\\CurrentVersion\\Run");
    machine.fakeRegistry.set(t("hkcu\\") + run, t("Chat"), t("C:\\Program Files\\Chat\\chat.exe /tray"));
    machine.fakeRegistry.set(
        t("hkcu\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\StartupApproved\\Run"), t("Chat"),
        {core::RegistryValue::binary, QByteArray::fromHex("030000000080f7d1e6a5da01")});
    machine.fakeRegistry.set(t("32:hklm\\") + run, t("Lost"), t("\"C:\\Gone\\x.exe\" -a"));
    const Page page = startupPage(machine, ignore);
    QCOMPARE(textAt(page, t("Current User/Chat/State")), t("Disabled"));
    QVERIFY(textAt(page, t("Current User/Chat/Disabled Since")).startsWith(t("2024-05-1")));
    QCOMPARE(textAt(page, t("Current User/Chat/Program")), t("C:\\Program Files\\Chat\\chat.exe"));
    QCOMPARE(textAt(page, t("Current User/Chat/Publisher")), t("Example Ltd"));
    QCOMPARE(textAt(page, t("All Users, 32-bit/Lost/State")), t("Enabled"));
    QCOMPARE(rowAt(page.sections, t("All Users, 32-bit/Lost"))->problem, t("does not exist"));
}

void GeneralPageTest::programs()
{
    const auto exists = [](const QString &path) {
        return path == t("C:\\A B\\c.exe") || path == t("C:\\A B\\d.exe");
    };
    const std::pair<const char *, const char *> rows[] = {{"C:\\A B\\c.exe /x", "C:\\A B\\c.exe"},
                                                          {"C:\\A B\\d -q", "C:\\A B\\d.exe"},
                                                          {"\"C:\\X Y\\z.exe\" 1", "C:\\X Y\\z.exe"},
                                                          {"\"unfinished", "unfinished"},
                                                          {"tool.exe -a", "tool.exe"},
                                                          {"C:\\No where\\e.exe -a", "C:\\No where\\e.exe"},
                                                          {"C:\\No where -a", "C:\\No"},
                                                          {"", ""}};
    for (const auto &[command, program] : rows)
        QCOMPARE(programOf(t(command), exists), t(program));
}

void GeneralPageTest::triggers()
{
    const std::pair<const char *, const char *> rows[] = {
        {"<CalendarTrigger><StartBoundary>2024-01-01T13:00:00</StartBoundary><ScheduleByWeek><WeeksInterval>2"
         "</WeeksInterval><DaysOfWeek><Sunday/><Friday/></DaysOfWeek></ScheduleByWeek></CalendarTrigger>",
         "Every 2 weeks on Sunday, Friday at 13:00"},
        {"<CalendarTrigger><ScheduleByDay><DaysInterval>1</DaysInterval></"
         "ScheduleByDay><Repetition><Interval>PT15M"
         "</Interval></Repetition></CalendarTrigger>",
         "Every day, repeated every 15 minutes"},
        {"<CalendarTrigger><ScheduleByMonth><DaysOfMonth><Day>1</Day><Day>31</Day><Day>Last</Day></"
         "DaysOfMonth>"
         "<Months><January/><December/></Months></ScheduleByMonth></CalendarTrigger>",
         "On day 1, 31, the last of January, December"},
        {"<CalendarTrigger><ScheduleByMonthDayOfWeek><Weeks><Week>1</Week><Week>Last</Week></"
         "Weeks><DaysOfWeek>"
         "<Monday/></DaysOfWeek><Months><May/></Months></ScheduleByMonthDayOfWeek></CalendarTrigger>",
         "On the first, last Monday of May"},
        {"<TimeTrigger><StartBoundary>2024-05-01T08:30:00</StartBoundary></TimeTrigger>",
         "Once on 2024-05-01 at 08:30"},
        {"<LogonTrigger><Enabled>false</Enabled><UserId>PC\\ann</UserId></LogonTrigger>",
         "When PC\\ann logs on (disabled)"},
        {"<BootTrigger/>", "When the computer starts"},
        {"<WnfStateChangeTrigger/>", "Another trigger"}};
    for (const auto &[xml, text] : rows) {
        ScheduledTask task;
        readTaskDefinition(
            t("<Task><Triggers>") + t(xml) +
                t("</Triggers><Settings><Hidden>true</Hidden></Settings><Actions><Exec><Command>a.exe"
                  "</Command><Arguments>-b</Arguments></Exec></Actions></Task>"),
            task);
        QCOMPARE(task.triggers.size(), 1u);
        QCOMPARE(triggerText(task.triggers[0]), t(text));
        QVERIFY(task.hidden);
        QCOMPARE(task.actions, QStringList{t("a.exe -b")});
    }
}

void GeneralPageTest::taskTexts()
{
    QCOMPARE(taskResultText(0), t("Success (0x0)"));
    QCOMPARE(taskResultText(0x41303), t("The task has not run yet (0x41303)"));
    QCOMPARE(taskResultText(0xdead), t("0xdead"));
    QCOMPARE(isoDurationText(t("P1DT1H30M")), t("1 day 1 hour 30 minutes"));
    QCOMPARE(isoDurationText(t("soon")), t("soon"));
}

void GeneralPageTest::driveBytes()
{
    DriveAnswers answers;
    answers.descriptor = QByteArray(28, '\0') + QByteArray::fromHex("11000000");
    answers.seekPenalty = QByteArray(8, '\0') + QByteArray(1, '\0');
    answers.temperature = QByteArray::fromHex("0000000000000000000000000100") + QByteArray(12, '\0') +
                          QByteArray::fromHex("2500");
    answers.nvmeHealth = QByteArray(512, '\0').replace(5, 1, QByteArray(1, '\7'));
    const DriveDetails details = readDrive(answers);
    QCOMPARE(details.bus, t("NVMe"));
    QCOMPARE(details.medium, t("Solid-state drive"));
    QCOMPARE(details.celsius, std::optional(37));
    QCOMPARE(details.wearPercent, std::optional(7));
    answers.temperature.replace(26, 2, QByteArray::fromHex("0080")); // not reported
    QCOMPARE(readDrive(answers).celsius, std::nullopt);
    QVERIFY(readDrive({}) == DriveDetails());
}

QTEST_APPLESS_MAIN(GeneralPageTest)
#include "tst_general_page.moc"
