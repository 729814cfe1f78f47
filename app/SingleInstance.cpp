// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SingleInstance.h"

#include "platform/TopLevelWindows.h"

#include <QElapsedTimer>

namespace
{

constexpr int startTime = 2000; // ms in which the first one shows its window
constexpr int lookInterval = 50;

// One that is not shown yet, or no longer, would leave the user with nothing.
HWND visibleWindow(const QString &title)
{
    const WId found = platform::findTopLevelWindow(platform::toolkitWindowClass(), title);
    const HWND window = reinterpret_cast<HWND>(found);
    return window && IsWindowVisible(window) ? window : nullptr;
}

} // namespace

// The first one owns the mark, and leaves it when it ends.
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
        // Two starts shortly after one another: the first is still on its way to its window.
        if (waited.elapsed() >= startTime || WaitForSingleObject(m_mark.get(), lookInterval) != WAIT_TIMEOUT)
            return false;
        window = visibleWindow(windowTitle);
    }
    if (IsIconic(window))
        ShowWindow(window, SW_RESTORE);
    SetForegroundWindow(window); // when Windows refuses, its taskbar button blinks
    return true;
}
