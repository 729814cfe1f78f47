// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SingleInstance.h"

#include "platform/TopLevelWindows.h"

SingleInstance::SingleInstance()
    : m_mark(CreateMutexW(nullptr, FALSE, L"Local\\FernlightLarkspur.MainWindow")),
      m_isFirst(GetLastError() != ERROR_ALREADY_EXISTS)
{
}

bool SingleInstance::activateFirst(const QString &windowTitle) const
{
    if (m_isFirst)
        return false;
    const WId found = platform::findTopLevelWindow(platform::toolkitWindowClass(), windowTitle);
    const HWND window = reinterpret_cast<HWND>(found);
    // A window that is not shown yet, or no longer, would leave the user with nothing.
    if (!window || !IsWindowVisible(window))
        return false;
    if (IsIconic(window))
        ShowWindow(window, SW_RESTORE);
    SetForegroundWindow(window); // when Windows refuses, its taskbar button blinks
    return true;
}
