// SPDX-License-Identifier: GPL-3.0-or-later

// What a running background agent costs in use: an hour of what Windows tells a top-level window, sent to the
// real one as fast as it takes it; and from a boundary to what is done at it. Changes stored settings: for
// the prefix of a benchmark only. usage: agent_hour on PICTURE... | agent_hour replay HOURS | agent_hour
// boundary (the last needs the agent that "on" was followed by, and waits for a full minute)

#include "bench/Bench.h"
#include "platform/Handle.h"
#include "platform/TopLevelWindows.h"
#include "settings/AgentState.h"
#include "settings/AutoDarkSettings.h"
#include "settings/HotKeySettings.h"
#include "settings/StayAwakeSettings.h"
#include "settings/TaskbarSettings.h"
#include "settings/WallpaperSettings.h"
#include "tests/support/TestPrefix.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QProcess>

#include <initguid.h>

#include <cstdlib>
#include <cstring>
#include <windows.h>
#include <wtsapi32.h>

namespace
{

constexpr QStringView themeKey = u"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";

// The features of the agent's table, whose timers follow each other.
enum FeatureTimer : WPARAM { awakeTimer = 101, darkTimer = 102, wallpaperTimer = 104 };
constexpr UINT trayMessage = WM_APP + 2;

void switchAllOn(const QStringList &pictures)
{
    settings::hotKeyCommands.write({QStringLiteral("01K4"), QStringLiteral("01L51")});
    settings::hotKeysEnabled.write(true);
    settings::awakeNudge.write(true);
    settings::awakeNudgeSeconds.write(60);
    settings::awakeWithLidClosed.write(true);
    settings::awakeDuration.write(0);
    settings::awakeProgram.write({});
    settings::stayAwakeActive.write(true);
    settings::autoDarkBySun.write(true);
    settings::autoDarkLatitude.write(QStringLiteral("52.52"));
    settings::autoDarkLongitude.write(QStringLiteral("13.40"));
    settings::autoDarkEnabled.write(true);
    settings::taskbarEnabled.write(true);
    settings::trayIconShown.write(true);
    settings::customFiles.write(pictures);
    settings::wallpaperSource.write(2);
    settings::wallpaperTime.write(0);
    settings::wallpaperEnabled.write(true);
}

// Memory of the agent's process, for messages that come with an address.
class RemoteBlock
{
public:
    RemoteBlock(HWND window, const void *content, SIZE_T bytes)
    {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        m_process.reset(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_WRITE, FALSE, process));
        m_address = VirtualAllocEx(m_process.get(), nullptr, bytes, MEM_COMMIT, PAGE_READWRITE);
        WriteProcessMemory(m_process.get(), m_address, content, bytes, nullptr);
    }
    ~RemoteBlock() { VirtualFreeEx(m_process.get(), m_address, 0, MEM_RELEASE); }
    RemoteBlock(const RemoteBlock &) = delete;
    RemoteBlock &operator=(const RemoteBlock &) = delete;

    LPARAM address() const { return reinterpret_cast<LPARAM>(m_address); }

private:
    platform::ObjectHandle m_process;
    void *m_address = nullptr;
};

class Hour
{
public:
    explicit Hour(HWND agent) : m_agent(agent) {}

    int sent() const { return m_sent; }

    // Spread over it as in use: what is told each minute, each five, and once.
    void replay()
    {
        for (int minute = 0; minute < 60; ++minute) {
            send(WM_TIMER, awakeTimer);
            for (int move = 0; move < 5; ++move)
                send(trayMessage, 0, WM_MOUSEMOVE);
            if (minute % 3 == 0)
                tellSetting(minute % 2 ? L"Environment" : L"TraySettings");
            if (minute % 5 == 0) {
                tellPower(GUID_BATTERY_PERCENTAGE_REMAINING, 80 - static_cast<DWORD>(minute) / 5);
                send(WM_DEVICECHANGE, 7); // DBT_DEVNODES_CHANGED
            }
            if (minute % 20 == 10)
                leaveAndReturn();
            if (minute % 10 == 9)
                send(platform::messageReloadSettings);
        }
        dockAndUndock();
        send(platform::messageSwitchTheme);
        send(platform::messageSwitchTheme);
        send(platform::messageChangeWallpaper, 1);
        send(WM_TIMER, wallpaperTimer);
        send(WM_TIMER, darkTimer);
        send(WM_TIMECHANGE);
    }

private:
    void send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        SendMessageW(m_agent, message, wParam, lParam);
        ++m_sent;
    }
    // Windows carries the text over to the other process.
    void tellSetting(const wchar_t *name) { send(WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(name)); }
    void tellPower(const GUID &what, DWORD value)
    {
        struct {
            GUID setting;
            DWORD bytes;
            DWORD value;
        } const told{what, sizeof value, value};
        const RemoteBlock block(m_agent, &told, sizeof told);
        send(WM_POWERBROADCAST, PBT_POWERSETTINGCHANGE, block.address());
    }
    void leaveAndReturn()
    {
        send(WM_WTSSESSION_CHANGE, WTS_SESSION_LOCK);
        tellPower(GUID_LIDSWITCH_STATE_CHANGE, 0);
        send(WM_POWERBROADCAST, PBT_APMSUSPEND);
        send(WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC);
        tellPower(GUID_LIDSWITCH_STATE_CHANGE, 1);
        send(WM_WTSSESSION_CHANGE, WTS_SESSION_UNLOCK);
    }
    void dockAndUndock()
    {
        for (const DWORD source : {0U, 1U}) {
            tellPower(GUID_ACDC_POWER_SOURCE, source);
            for (int monitor = 0; monitor < 2; ++monitor)
                send(WM_DISPLAYCHANGE, 32, MAKELPARAM(1920, 1080));
            tellSetting(L"WindowMetrics");
            send(WM_THEMECHANGED);
        }
    }

    HWND m_agent;
    int m_sent = 0;
};

quint32 appsLight()
{
    quint32 light = 2;
    settings::readDword(themeKey, u"AppsUseLightTheme", light);
    return light;
}

// The theme changes at the next full minute.
double boundaryToTheme(HWND agent)
{
    const QTime next = QTime::currentTime().addSecs(75); // the agent has time to read what follows
    const bool toDark = appsLight() != 0;
    const auto store = [](const QTime &time, const settings::Number &hour, const settings::Number &minute,
                          const settings::Number &period) {
        hour.write(time.hour() % 12 == 0 ? 12 : time.hour() % 12);
        minute.write(time.minute());
        period.write(time.hour() < 12 ? 0 : 1);
    };
    const QTime other = next.addSecs(-3600);
    store(toDark ? next : other, settings::darkHour, settings::darkMinute, settings::darkPeriod);
    store(toDark ? other : next, settings::lightHour, settings::lightMinute, settings::lightPeriod);
    settings::autoDarkBySun.write(false);
    settings::autoDarkWaits.write(false);
    SendMessageW(agent, platform::messageReloadSettings, 0, 0);
    const quint32 before = appsLight();
    const QDateTime boundary(QDate::currentDate(), QTime(next.hour(), next.minute()));
    while (appsLight() == before && boundary.msecsTo(QDateTime::currentDateTime()) < 20'000)
        Sleep(1);
    return static_cast<double>(boundary.msecsTo(QDateTime::currentDateTime()));
}

// The switch of the user goes off.
double endToAsleep(HWND agent)
{
    QProcess program;
    program.start(QStringLiteral("notepad"), QStringList());
    program.waitForStarted();
    settings::awakeProgram.write(QStringLiteral("notepad.exe"));
    settings::stayAwakeActive.write(true);
    SendMessageW(agent, platform::messageReloadSettings, 0, 0);
    Sleep(1000);
    program.kill();
    return 1000 * bench::seconds([] {
               for (int i = 0; i < 20'000 && settings::stayAwakeActive.read(); ++i)
                   Sleep(1);
           });
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    tests::requireTestPrefix();
    const QStringList arguments = QCoreApplication::arguments();
    const QString what = arguments.value(1);
    if (what == QLatin1String("on")) {
        switchAllOn(arguments.mid(2));
        return EXIT_SUCCESS;
    }
    const HWND agent = FindWindowW(L"GLASSWICK", nullptr);
    if (!agent)
        return EXIT_FAILURE;
    if (what == QLatin1String("replay")) {
        Hour hour(agent);
        const int hours = arguments.value(2).toInt();
        const double time = bench::seconds([&] {
            SendMessageW(agent, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
            for (int i = 0; i < hours; ++i)
                hour.replay();
        });
        bench::report("events", hour.sent());
        bench::report("one of them, with its way there and back", 1000 * time / hour.sent(), "ms");
        return EXIT_SUCCESS;
    }
    bench::report("from the end of the program to the switch", endToAsleep(agent), "ms");
    bench::report("from the boundary to the other theme", boundaryToTheme(agent), "ms");
    return EXIT_SUCCESS;
}
