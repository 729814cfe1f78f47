// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SingleInstance.h"

#include "platform/TopLevelWindows.h"

#include <QElapsedTimer>

namespace
{

constexpr int startTime = 2000; // ms, for the first instance to show its window
constexpr int lookInterval = 50;

// A hidden window would leave the user with nothing.
HWND visibleWindow(const QString &title)
{
    const WId found = platform::findTopLevelWindow(platform::toolkitWindowClass(), title);
    const HWND window = reinterpret_cast<HWND>(found);
    return window && IsWindowVisible(window) ? window : nullptr;
}

} // namespace

// The first instance owns the mutex until it exits.
SingleInstance::SingleInstance()
    : m_mark(CreateMutexW(nullptr, TRUE, L"Local\\FernlightLarkspur.MainWindow")),
      m_isFirst(GetLastError() != ERROR_ALREADY_EXISTS)
{
}

SingleInstance::~SingleInstance()
{
    if (m_isFirst)
        ReleaseMutex(m_mark.get());
}

bool SingleInstance::activateFirst(const QString &windowTitle) const
{
    if (m_isFirst)
        return false;
    QElapsedTimer waited;
    waited.start();
    HWND window = visibleWindow(windowTitle);
    while (!window) {
        // Two starts in quick succession: the first instance has not shown its window yet.
        if (waited.elapsed() >= startTime || WaitForSingleObject(m_mark.get(), lookInterval) != WAIT_TIMEOUT)
            return false;
        window = visibleWindow(windowTitle);
    }
    if (IsIconic(window))
        ShowWindow(window, SW_RESTORE);
    SetForegroundWindow(window); // if Windows refuses, the taskbar button flashes
    return true;
}
