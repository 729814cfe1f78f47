// SPDX-License-Identifier: GPL-3.0-or-later

// The time from a key to what the background agent does: it opens the countdown of a restart, which is
// stopped by ending the agent; and from the wish for another wallpaper to its being set, by the helper
// process beside the agent. Changes stored settings: for the prefix of a benchmark only. usage: agent AGENT
// [PICTURE PICTURE]

#include "bench/Bench.h"
#include "platform/TopLevelWindows.h"
#include "settings/HotKeySettings.h"
#include "settings/WallpaperSettings.h"
#include "tests/support/TestPrefix.h"

#include <QCoreApplication>
#include <QProcess>

#include <cstdlib>
#include <vector>
#include <windows.h>

namespace
{

HWND waitFor(const wchar_t *windowClass)
{
    HWND window = nullptr;
    for (int i = 0; i < 20'000 && !window; ++i) {
        window = FindWindowW(windowClass, nullptr);
        if (!window)
            Sleep(1);
    }
    return window;
}

void press(const std::vector<WORD> &keys)
{
    std::vector<INPUT> inputs;
    for (std::size_t i = 0; i < 2 * keys.size(); ++i) {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = i < keys.size() ? keys[i] : keys[2 * keys.size() - 1 - i];
        input.ki.dwFlags = i < keys.size() ? 0 : KEYEVENTF_KEYUP;
        inputs.push_back(input);
    }
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

double keyToAction()
{
    return 1000 * bench::seconds([] {
               press({VK_CONTROL, VK_SHIFT, 'K'});
               waitFor(L"LarkspurCountdown");
           });
}

// The index is stored once the picture is set. -1 when nothing happens.
double wishToWallpaper(HWND agent)
{
    const int before = settings::customIndex.read();
    int waited = 0;
    const double time = 1000 * bench::seconds([&] {
                            PostMessageW(agent, platform::messageChangeWallpaper, 1, 0);
                            while (settings::customIndex.read() == before && ++waited < 20'000)
                                Sleep(1);
                        });
    return waited < 20'000 ? time : -1;
}

void changeWallpapers(const QString &agent, const QStringList &pictures)
{
    settings::customFiles.write(pictures);
    settings::customIndex.write(0);
    settings::wallpaperSource.write(2);
    settings::wallpaperEnabled.write(true);
    QProcess process;
    process.start(agent, QStringList());
    const HWND window = waitFor(L"GLASSWICK");
    Sleep(5000); // the first one
    std::vector<double> times;
    for (int round = 0; round < 10; ++round)
        times.push_back(wishToWallpaper(window));
    bench::report("from the wish to the wallpaper", bench::median(times), "ms");
    settings::wallpaperEnabled.write(false);
    PostMessageW(window, WM_CLOSE, 0, 0);
    process.waitForFinished();
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    tests::requireTestPrefix();
    if (argc < 2)
        return EXIT_FAILURE;
    settings::hotKeysEnabled.write(true);
    settings::hotKeyCommands.write({QStringLiteral("01K53600")});
    std::vector<double> times;
    for (int round = 0; round < 5; ++round) {
        QProcess process;
        process.start(QCoreApplication::arguments().at(1), QStringList());
        const HWND window = waitFor(L"GLASSWICK");
        SendMessageW(window, WM_NULL, 0, 0); // answers once it has registered its keys
        times.push_back(keyToAction());
        process.kill();
        process.waitForFinished();
    }
    bench::report("from the key to the countdown", bench::median(times), "ms");
    settings::hotKeysEnabled.write(false);
    if (argc > 3)
        changeWallpapers(QCoreApplication::arguments().at(1), QCoreApplication::arguments().mid(2));
    return EXIT_SUCCESS;
}
