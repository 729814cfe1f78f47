// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <QString>

#include <functional>
#include <windows.h>

namespace agent
{

// Restarts or shuts down Windows after a visible countdown: a small topmost window whose only button, Enter
// or Esc cancels it. Windows asks programs with unsaved work as usual. Destroying this object closes the
// window and cancels the countdown.
class Countdown
{
public:
    enum class End { Restart, ShutDown };
    using Report = std::function<void(const QString &)>;

    static constexpr int minDelay = 10; // seconds, so that there is time to cancel

    Countdown() = default;
    ~Countdown();
    Countdown(const Countdown &) = delete;
    Countdown &operator=(const Countdown &) = delete;

    // Returns a sentence for the log; `report` receives the outcome later. Does nothing while a countdown is
    // running.
    QString begin(End end, int delay, Report report);

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool createWindow();
    void layOut();
    void showSeconds() const;
    void tick();
    void stop();
    void endSession();
    void close();

    End m_end = End::Restart;
    ULONGLONG m_deadline = 0; // GetTickCount64()
    Report m_report;
    HWND m_window = nullptr;
    HWND m_text = nullptr;
    HWND m_button = nullptr;
    platform::FontHandle m_font;
};

} // namespace agent
