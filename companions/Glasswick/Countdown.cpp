// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/Countdown.h"

#include "automation/engine/Texts.h"
#include "platform/Text.h"

#include <algorithm>
#include <utility>

using automation::tr;

namespace agent
{

namespace
{

constexpr wchar_t className[] = L"LarkspurCountdown";
constexpr wchar_t title[] = L"Fernlight Larkspur";
constexpr UINT_PTR tickTimer = 1;
constexpr int width = 380, height = 120, margin = 16, buttonWidth = 96, buttonHeight = 28; // at 96 DPI

// Windows does not end the session without this privilege, which every interactive user has, disabled by
// default.
bool enableShutdown()
{
    platform::ObjectHandle token;
    TOKEN_PRIVILEGES wanted = {};
    wanted.PrivilegeCount = 1;
    wanted.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, token.put()) ||
        !LookupPrivilegeValueW(nullptr, L"SeShutdownPrivilege", &wanted.Privileges[0].Luid))
        return false;
    AdjustTokenPrivileges(token.get(), FALSE, &wanted, 0, nullptr, nullptr);
    return GetLastError() == ERROR_SUCCESS;
}

} // namespace

Countdown::~Countdown()
{
    close();
}

QString Countdown::begin(End end, int delay, Report report)
{
    if (m_window)
        return tr("Ignored: a countdown is running");
    m_end = end;
    m_report = std::move(report);
    const int seconds = std::max(delay, minDelay);
    m_deadline = GetTickCount64() + static_cast<ULONGLONG>(seconds) * 1000;
    if (!createWindow())
        return tr("Not begun: the countdown could not be shown");
    return tr("%1 in %2 seconds")
        .arg(end == End::Restart ? tr("Windows restarts") : tr("Windows shuts down"))
        .arg(seconds);
}

bool Countdown::createWindow()
{
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW description = {};
    description.cbSize = sizeof description;
    description.lpfnWndProc = procedure;
    description.hInstance = instance;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = className;
    RegisterClassExW(&description); // later calls fail, which is harmless
    m_window = CreateWindowExW(WS_EX_TOPMOST | WS_EX_DLGMODALFRAME, className, title,
                               WS_POPUP | WS_CAPTION | WS_SYSMENU, CW_USEDEFAULT, CW_USEDEFAULT, width,
                               height, nullptr, nullptr, instance, this);
    if (!m_window)
        return false;
    m_text = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, m_window, nullptr,
                             instance, nullptr);
    m_button = CreateWindowExW(0, L"BUTTON", L"Cancel", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON,
                               0, 0, 0, 0, m_window, reinterpret_cast<HMENU>(IDCANCEL), instance, nullptr);
    layOut();
    showSeconds();
    SetTimer(m_window, tickTimer, 250, nullptr);
    ShowWindow(m_window, SW_SHOWNORMAL);
    SetForegroundWindow(m_window);
    SetFocus(m_button);
    return true;
}

void Countdown::layOut()
{
    const auto dpi = static_cast<int>(GetDpiForWindow(m_window));
    const auto scaled = [dpi](int length) { return MulDiv(length, dpi, USER_DEFAULT_SCREEN_DPI); };
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    if (SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                                   static_cast<UINT>(dpi)))
        m_font.reset(CreateFontIndirectW(&metrics.lfMessageFont));
    for (const HWND child : {m_text, m_button})
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);

    RECT frame{0, 0, scaled(width), scaled(height)};
    AdjustWindowRectExForDpi(&frame, WS_POPUP | WS_CAPTION | WS_SYSMENU, FALSE, WS_EX_DLGMODALFRAME,
                             static_cast<UINT>(dpi));
    const int outerWidth = frame.right - frame.left, outerHeight = frame.bottom - frame.top;
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    SetWindowPos(m_window, HWND_TOPMOST, (area.left + area.right - outerWidth) / 2,
                 (area.top + area.bottom - outerHeight) / 2, outerWidth, outerHeight, 0);
    MoveWindow(m_text, scaled(margin), scaled(margin), scaled(width - 2 * margin), scaled(2 * margin), FALSE);
    MoveWindow(m_button, scaled(width - margin - buttonWidth), scaled(height - margin - buttonHeight),
               scaled(buttonWidth), scaled(buttonHeight), FALSE);
}

void Countdown::showSeconds() const
{
    const ULONGLONG now = GetTickCount64();
    const ULONGLONG seconds = m_deadline > now ? (m_deadline - now + 999) / 1000 : 0;
    const QString text = m_end == End::Restart ? tr("Windows will restart in %1 seconds.")
                                               : tr("Windows will shut down in %1 seconds.");
    SetWindowTextW(m_text, platform::wide(text.arg(seconds)));
}

void Countdown::tick()
{
    if (GetTickCount64() < m_deadline) {
        showSeconds();
        return;
    }
    close();
    endSession();
}

void Countdown::stop()
{
    close();
    m_report(tr("Stopped by the user"));
}

void Countdown::endSession()
{
    const UINT how = m_end == End::Restart ? EWX_REBOOT : EWX_POWEROFF;
    constexpr DWORD reason = SHTDN_REASON_MAJOR_OTHER | SHTDN_REASON_MINOR_OTHER | SHTDN_REASON_FLAG_PLANNED;
    if (!enableShutdown() || !ExitWindowsEx(how, reason))
        m_report(tr("Windows refused: error %1").arg(GetLastError()));
}

void Countdown::close()
{
    if (const HWND window = std::exchange(m_window, nullptr)) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        DestroyWindow(window);
    }
    m_font.reset();
}

LRESULT CALLBACK Countdown::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        const auto *creation = reinterpret_cast<const CREATESTRUCTW *>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto *self = reinterpret_cast<Countdown *>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self && message == WM_TIMER) {
        self->tick();
        return 0;
    }
    if (self && (message == WM_CLOSE || (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL))) {
        self->stop();
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace agent
