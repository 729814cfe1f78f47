// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <QString>

#include <functional>
#include <windows.h>

namespace agent
{

// Restarts or shuts down Windows after a countdown that is on the screen and can be stopped: a small window
// above the others, whose one button, Enter and Esc stop it. Programs with unsaved work are asked by Windows
// as at any other restart. The window goes with this object, and nothing happens then.
class Countdown
{
public:
    enum class End { Restart, ShutDown };
    using Report = std::function<void(const QString &)>;

    static constexpr int minDelay = 10; // seconds; a shorter one could not be stopped

    Countdown() = default;
    ~Countdown();
    Countdown(const Countdown &) = delete;
    Countdown &operator=(const Countdown &) = delete;

    // A sentence for the log; `report` hears what came of it later. Does nothing while one runs.
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
