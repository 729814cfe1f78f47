// SPDX-License-Identifier: GPL-3.0-or-later

// Drives the real agent: its window, its keys, its log.
#include "automation/engine/AgentLog.h"
#include "platform/KnownFolders.h"
#include "platform/TopLevelWindows.h"
#include "settings/AgentState.h"
#include "settings/AutoDarkSettings.h"
#include "settings/HotKeySettings.h"
#include "settings/StayAwakeSettings.h"
#include "settings/WallpaperSettings.h"
#include "tests/support/FakeWindow.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTest>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr unsigned reloadSettings = 1624, testHotKey = 1625;

QString besideTests(const QString &path)
{
    return QDir::toNativeSeparators(QDir::cleanPath(QCoreApplication::applicationDirPath() + u'/' + path));
}

HWND agentWindow()
{
    return FindWindowW(L"GLASSWICK", L"Transparent Taskbar");
}

// An agent that is ended, at the latest, with the test.
class Agent
{
public:
    Agent() { start(m_process); }
    ~Agent()
    {
        if (m_process.state() == QProcess::Running)
            m_process.kill();
        m_process.waitForFinished();
    }

    static void start(QProcess &process)
    {
        process.start(besideTests(u"../../companions/Glasswick/Glasswick.exe"_s), QStringList());
        QVERIFY(process.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(agentWindow(), 20'000);
        // It answers once it has registered its keys.
        SendMessageW(agentWindow(), WM_NULL, 0, 0);
    }

    QProcess &process() { return m_process; }

private:
    QProcess m_process;
};

void press(WORD key)
{
    for (const bool up : {false, true}) {
        const std::array<WORD, 3> keys = up ? std::array<WORD, 3>{key, VK_SHIFT, VK_CONTROL}
                                            : std::array<WORD, 3>{VK_CONTROL, VK_SHIFT, key};
        for (const WORD one : keys) {
            INPUT input = {};
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = one;
            input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
            SendInput(1, &input, sizeof input);
        }
    }
}

QString logPath()
{
    return automation::agentLogPath(platform::knownFolder(platform::KnownFolder::LocalAppData));
}

bool isLogged(const QString &subject, const QString &text)
{
    QFile file(logPath());
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const auto entries = automation::parseLog(file.readAll());
    return std::any_of(entries.begin(), entries.end(), [&](const automation::LogEntry &entry) {
        return entry.subject == subject && entry.text.contains(text);
    });
}

void store(const QStringList &commands)
{
    settings::hotKeyCommands.write(commands);
    settings::hotKeysEnabled.write(true);
}

// What a main window is told of keeping awake.
QList<WPARAM> statesHeard;

LRESULT CALLBACK noteStates(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == platform::messageStayAwakeState)
        statesHeard.append(wParam);
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

class AgentTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void startsProgramsByKey();
    void sparesWhatItCannotRead();
    void restartCanBeStopped();
    void oneAtATime();
    void endsOnClose();
    void staysAwakeUntilAProgramEnds();
    void staysAwakeOverAKill();
    void switchesTheTheme();
    void changesTheWallpaper();
};

void AgentTest::initTestCase()
{
    tests::requireTestPrefix();
    QFile::remove(logPath());
}

void AgentTest::startsProgramsByKey()
{
    const tests::TestFolder folder;
    const QString program = besideTests(u"started_program.exe"_s);
    store({u"01K3%1;%2"_s.arg(program, folder.path())});
    Agent agent;
    const QString note = folder.path() + u"\\started.txt"_s;
    press('K');
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(note), 20'000);
    QTRY_VERIFY(isLogged(u"Ctrl+Shift+K"_s, u"Opened"_s));

    // A list that changed counts from the message on; the old key does nothing any more.
    QVERIFY(QFile::remove(note));
    store({u"01J3%1;%2"_s.arg(program, folder.path())});
    SendMessageW(agentWindow(), reloadSettings, 0, 0);
    press('K');
    press('J');
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(note), 20'000);
    QFile file(note);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().count("started"), 1);
}

void AgentTest::sparesWhatItCannotRead()
{
    const tests::TestFolder folder;
    store(
        {u"rubbish"_s, u"01F10x"_s, u"01M1%1\\gone"_s.arg(folder.path()), u"01N2file:///C:/x"_s, u"01K4"_s});
    settings::writeDword(settings::keys::hotKey, u"commandCount", 0xffffffff);
    Agent agent;
    QTRY_VERIFY(isLogged(u"rubbish"_s, u"cannot be read"_s));
    for (const WPARAM row : {WPARAM(2), WPARAM(3), WPARAM(900)})
        SendMessageW(agentWindow(), testHotKey, row, 0);
    QTRY_VERIFY(isLogged(u"Ctrl+Shift+M"_s, u"is not there"_s));
    QTRY_VERIFY(isLogged(u"Ctrl+Shift+N"_s, u"no address"_s));
    QCOMPARE(agent.process().state(), QProcess::Running);
}

void AgentTest::restartCanBeStopped()
{
    store({u"01K50"_s});
    Agent agent;
    PostMessageW(agentWindow(), testHotKey, 0, 0);
    HWND countdown = nullptr;
    QTRY_VERIFY(countdown = FindWindowW(L"LarkspurCountdown", nullptr));
    QTRY_VERIFY(isLogged(u"Ctrl+Shift+K"_s, u"in 10 seconds"_s));
    PostMessageW(countdown, WM_COMMAND, IDCANCEL, 0);
    QTRY_VERIFY(!FindWindowW(L"LarkspurCountdown", nullptr));
    QTRY_VERIFY(isLogged(u"Ctrl+Shift+K"_s, u"Stopped"_s));
}

void AgentTest::oneAtATime()
{
    settings::writeDword(settings::keys::root, u"ShowTrayIcon", 1);
    Agent first;
    const HWND window = agentWindow();
    QProcess second;
    Agent::start(second);
    QVERIFY(second.state() == QProcess::NotRunning || second.waitForFinished());
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(agentWindow(), window);
    // One that was killed leaves no trace that keeps the next from starting.
    first.process().kill();
    QVERIFY(first.process().waitForFinished());
    QTRY_VERIFY(!agentWindow());
    const Agent third;
    QVERIFY(agentWindow());
}

void AgentTest::endsOnClose()
{
    constexpr QStringView run = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
    store({u"01K4"_s});
    Agent agent;
    QString command;
    QTRY_VERIFY(settings::readString(run, u"Fernlight Larkspur Agent", command));
    QVERIFY(command.contains(u"Glasswick.exe\""_s));
    settings::hotKeysEnabled.write(false);
    PostMessageW(agentWindow(), WM_CLOSE, 0, 0);
    QVERIFY(agent.process().waitForFinished());
    QCOMPARE(agent.process().exitCode(), 0);
    QVERIFY(!settings::valueExists(run, u"Fernlight Larkspur Agent"));
    QVERIFY(RegisterHotKey(nullptr, 1, MOD_CONTROL | MOD_SHIFT, 'K'));
    UnregisterHotKey(nullptr, 1);
}

void AgentTest::staysAwakeUntilAProgramEnds()
{
    const tests::FakeWindow mainWindow(platform::toolkitWindowClass(), u"Fernlight Larkspur"_s);
    SetWindowLongPtrW(reinterpret_cast<HWND>(mainWindow.id()), GWLP_WNDPROC,
                      reinterpret_cast<LONG_PTR>(noteStates));
    QProcess program;
    program.start(u"cmd.exe"_s, {u"/c"_s, u"pause"_s});
    QVERIFY(program.waitForStarted());
    settings::writeDword(settings::keys::wakeward, u"simulatePressTimeOut", 77);
    settings::stayAwakeActive.write(true);
    Agent agent;
    QCOMPARE(settings::awakeNudgeSeconds.read(), 77);
    settings::awakeProgram.write(u"CMD.EXE"_s);
    SendMessageW(agentWindow(), reloadSettings, 0, 0);
    QVERIFY(settings::readAgentState(automation::features::stayAwake).next.contains(u"CMD.EXE"_s));
    program.kill();
    QVERIFY(program.waitForFinished());
    QTRY_VERIFY(!settings::stayAwakeActive.read());
    QTRY_VERIFY(isLogged(u"Off"_s, u"CMD.EXE has ended"_s));
    QTRY_COMPARE(statesHeard, (QList<WPARAM>{1, 0}));
}

void AgentTest::staysAwakeOverAKill()
{
    settings::stayAwakeActive.write(true);
    settings::awakeDuration.write(30);
    for (const bool over : {false, true}) {
        if (over)
            settings::writeAgentNote(settings::awakeEndNote, u"2026-01-01T00:00:00Z"_s);
        Agent agent;
        QTRY_COMPARE(settings::stayAwakeActive.read(), !over);
        QCOMPARE(settings::readAgentNote(settings::awakeEndNote).isEmpty(), over);
        agent.process().kill();
        QVERIFY(agent.process().waitForFinished());
        QTRY_VERIFY(!agentWindow());
    }
}

void AgentTest::switchesTheTheme()
{
    constexpr QStringView key = u"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
    const auto apps = [&] {
        quint32 light = 7;
        settings::readDword(key, u"AppsUseLightTheme", light);
        return light;
    };
    settings::writeDword(key, u"AppsUseLightTheme", 1);
    settings::writeDword(key, u"SystemUsesLightTheme", 1);
    settings::autoDarkEnabled.write(true);
    settings::autoDarkAction.write(1);
    // Dark from now on for some hours: the light hour is half a day ahead.
    const QTime now = QTime::currentTime();
    settings::darkHour.write(now.hour() % 12 == 0 ? 12 : now.hour() % 12);
    settings::darkPeriod.write(now.hour() / 12);
    settings::lightHour.write(settings::darkHour.read());
    settings::lightPeriod.write(1 - now.hour() / 12);
    Agent agent;
    QTRY_COMPARE(apps(), 0U);
    QTRY_VERIFY(isLogged(u"Dark"_s, u"Your hour"_s));
    quint32 system = 7;
    QVERIFY(settings::readDword(key, u"SystemUsesLightTheme", system) && system == 1);
    SendMessageW(agentWindow(), platform::messageSwitchTheme, 0, 0);
    QCOMPARE(apps(), 1U);
    SendMessageW(agentWindow(), reloadSettings, 0, 0); // respected
    QCOMPARE(apps(), 1U);
    SendMessageW(agentWindow(), platform::messageSwitchTheme, 0, 0);
    QCOMPARE(apps(), 0U);
    settings::autoDarkEnabled.write(false);
    PostMessageW(agentWindow(), WM_CLOSE, 0, 0);
    QVERIFY(agent.process().waitForFinished());
    QCOMPARE(apps(), 1U);
    settings::deleteValue(key, u"AppsUseLightTheme");
    settings::deleteValue(key, u"SystemUsesLightTheme");
}

// The whole way: the agent, its helper, the decoder, and the desktop of Wine.
void AgentTest::changesTheWallpaper()
{
    // Not by the call for it, which keeps in this process what it said first.
    const auto desktop = [] {
        QString path;
        settings::readString(u"Control Panel\\Desktop", u"Wallpaper", path);
        return path;
    };
    const tests::TestFolder folder;
    const QString before = desktop();
    QStringList own{folder.path(u"gone.bmp"_s)};
    for (const int width : {64, 65}) {
        own.append(folder.path(u"%1.bmp"_s.arg(width)));
        QImage image(width, 48, QImage::Format_RGB32);
        image.fill(Qt::darkBlue);
        QVERIFY(image.save(own.last()));
    }
    settings::customFiles.write(own);
    settings::wallpaperSource.write(2);
    settings::wallpaperEnabled.write(true);
    Agent agent;
    QTRY_VERIFY_WITH_TIMEOUT(isLogged(u"Changed"_s, u"\"64\", you chose so; \"gone.bmp\""_s), 30'000);
    QCOMPARE(QImage(desktop()).width(), 64);
    QCOMPARE(settings::customIndex.read(), 1);
    QVERIFY(settings::readAgentState(automation::features::wallpaper).now.contains(u"64"_s));
    PostMessageW(agentWindow(), platform::messageChangeWallpaper, 1, 0);
    QTRY_VERIFY_WITH_TIMEOUT(isLogged(u"Changed"_s, u"\"65\", you asked for it"_s), 30'000);
    QCOMPARE(QImage(desktop()).width(), 65);

    // Only the wallpaper is on, so its end is the agent's, and what was there before comes back.
    settings::wallpaperEnabled.write(false);
    PostMessageW(agentWindow(), WM_CLOSE, 0, 0);
    QVERIFY(agent.process().waitForFinished());
    QTRY_COMPARE_WITH_TIMEOUT(desktop(), before, 20'000);
    QTRY_VERIFY(isLogged(u"Off"_s, u"former wallpaper is back"_s));
}

QTEST_MAIN(AgentTest)
#include "tst_agent.moc"
