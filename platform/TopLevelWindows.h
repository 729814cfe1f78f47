// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <qwindowdefs.h>

// Windows of this and other processes, and the private messages between them. Any thread.
namespace platform
{

// Private messages of the suite's executables.
inline constexpr unsigned messageReloadSettings = 0x0400 + 600; // 1624, to the background agent
inline constexpr unsigned messageTestHotKey =
    0x0400 + 601; // to the agent; wParam: index of the stored shortcut
// To the agent: light becomes dark or dark light, at once.
inline constexpr unsigned messageSwitchTheme = 0x0400 + 602;
// To the agent; wParam: 0 the newest picture, 1 the next one, 2 the one before.
inline constexpr unsigned messageChangeWallpaper = 0x0400 + 603;
inline constexpr unsigned messageRefreshIconExtractor = 0x0400 + 107; // 1131, to the main window
inline constexpr unsigned messageLoggedOnly = 0x0400 + 108;           // 1132, to the main window
inline constexpr unsigned messageStayAwakeState = 0x0400 + 704;       // 1728, to the main window
// To the main window; wParam: the id of the module whose page is to be shown.
inline constexpr unsigned messageOpenModule = 0x0400 + 705;

// The first top-level window of this class and title; 0 when there is none.
WId findTopLevelWindow(const QString &className, const QString &title);

// The class that the running Qt gives its top-level windows: "Qt682QWindowIcon" for 6.8.2.
QString toolkitWindowClass();

// A window of a companion executable by its title: looks for the toolkit class of the first companions,
// "Qt653QWindowIcon", and then for that of the running Qt, with which today's companions are built.
WId companionWindow(const QString &title);

// Puts a message into the window's queue and returns at once; false when the window is gone.
bool postToWindow(WId window, unsigned message, quintptr wParam = 0, qintptr lParam = 0);

// SM_CXFULLSCREEN and SM_CYFULLSCREEN: the client area of a full-screen window on the primary screen, in
// physical pixels of this per-monitor-aware process.
struct ScreenMetrics {
    quint32 cx;
    quint32 cy;
};
ScreenMetrics fullScreenClientArea();

} // namespace platform
