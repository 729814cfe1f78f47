// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <qwindowdefs.h>

// Top-level windows of this and other processes, and the private messages between them. Any thread.
namespace platform
{

// Private messages of the suite's executables.
inline constexpr unsigned messageReloadSettings = 0x0400 + 600; // 1624, to the background agent
inline constexpr unsigned messageTestHotKey =
    0x0400 + 601; // to the agent; wParam: index of the stored shortcut
// To the agent: toggle between light and dark immediately.
inline constexpr unsigned messageSwitchTheme = 0x0400 + 602;
// To the agent; wParam: 0 for the newest image, 1 for the next, 2 for the previous one.
inline constexpr unsigned messageChangeWallpaper = 0x0400 + 603;
inline constexpr unsigned messageRefreshIconExtractor = 0x0400 + 107; // 1131, to the main window
inline constexpr unsigned messageLoggedOnly = 0x0400 + 108;           // 1132, to the main window
inline constexpr unsigned messageStayAwakeState = 0x0400 + 704;       // 1728, to the main window
// To the main window; wParam: id of the module whose page to show.
inline constexpr unsigned messageOpenModule = 0x0400 + 705;

// The first top-level window with this class and title; 0 if there is none.
WId findTopLevelWindow(const QString &className, const QString &title);

// The class name that this Qt version gives to top-level windows: "Qt682QWindowIcon" for 6.8.2.
QString toolkitWindowClass();

// Finds a companion's window by title: first with the class name of early companions, "Qt653QWindowIcon",
// then with that of the running Qt, used by current companions.
WId companionWindow(const QString &title);

// Posts a message and returns at once; false if the window does not exist any more.
bool postToWindow(WId window, unsigned message, quintptr wParam = 0, qintptr lParam = 0);

// SM_CXFULLSCREEN and SM_CYFULLSCREEN: the client area of a full-screen window on the primary screen, in
// physical pixels of this per-monitor-aware process.
struct ScreenMetrics {
    quint32 cx;
    quint32 cy;
};
ScreenMetrics fullScreenClientArea();

} // namespace platform
