// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QtGui/qwindowdefs.h>

#include <windows.h>

#include <string>

namespace tests
{

// A top-level window of any class and title, as another program would have it. It is not shown.
class FakeWindow
{
public:
    FakeWindow(const QString &className, const QString &title)
        : m_class(className.toStdWString()),
          m_instance(GetModuleHandleW(nullptr))
    {
        WNDCLASSEXW description = {};
        description.cbSize = sizeof description;
        description.lpfnWndProc = DefWindowProcW;
        description.hInstance = m_instance;
        description.lpszClassName = m_class.c_str();
        RegisterClassExW(&description);
        m_window = CreateWindowExW(0, m_class.c_str(), title.toStdWString().c_str(), WS_OVERLAPPEDWINDOW, 0,
                                   0, 100, 100, nullptr, nullptr, m_instance, nullptr);
        if (!m_window)
            qFatal("The fake window could not be made");
    }
    ~FakeWindow()
    {
        DestroyWindow(m_window);
        UnregisterClassW(m_class.c_str(), m_instance);
    }
    FakeWindow(const FakeWindow &) = delete;
    FakeWindow &operator=(const FakeWindow &) = delete;

    WId id() const { return reinterpret_cast<WId>(m_window); }

private:
    std::wstring m_class;
    HINSTANCE m_instance;
    HWND m_window;
};

} // namespace tests
