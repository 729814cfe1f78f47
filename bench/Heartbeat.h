// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The longest time for which an interface does not answer. A timer beats every 5 ms on the interface thread;
// the longest gap between two beats is the stall. Beside it stands how long the thread was at work in that
// gap: the rest is other threads and programs on the same processors.

#include "bench/Bench.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace bench
{

constexpr int beat = 5;     // ms
constexpr int settle = 600; // ms after each step, for what it started

// How long the current thread has been at work, in milliseconds.
inline double workDone()
{
    FILETIME created;
    FILETIME ended;
    ULARGE_INTEGER kernel;
    ULARGE_INTEGER user;
    FILETIME kernelTime;
    FILETIME userTime;
    GetThreadTimes(GetCurrentThread(), &created, &ended, &kernelTime, &userTime);
    kernel.LowPart = kernelTime.dwLowDateTime;
    kernel.HighPart = kernelTime.dwHighDateTime;
    user.LowPart = userTime.dwLowDateTime;
    user.HighPart = userTime.dwHighDateTime;
    return static_cast<double>(kernel.QuadPart + user.QuadPart) / 1e4; // 100 ns
}

struct Stall {
    double time = 0; // ms
    double work = 0; // ms of it

    bool operator<(const Stall &other) const { return time < other.time; }
};

class Heartbeat
{
public:
    Heartbeat()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            const double work = workDone();
            const Stall gap{static_cast<double>(m_clock.nsecsElapsed()) / 1e6, work - m_work};
            m_longest = std::max(m_longest, gap);
            m_work = work;
            m_clock.start();
        });
        m_clock.start();
        m_timer.start(beat);
    }

    // The longest gap since the last call.
    Stall take() { return std::exchange(m_longest, {}); }

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    double m_work = workDone();
    Stall m_longest;
};

inline void spin(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

inline void reportStall(const std::string &what, const Stall &stall)
{
    const std::string work = "ms, " + std::to_string(std::lround(stall.work)) + " of it at work";
    report(what, stall.time, work.c_str());
}

inline Stall measured(const std::string &what, Heartbeat &heart)
{
    const Stall stall = heart.take();
    reportStall("interface stall, " + what, stall);
    return stall;
}

} // namespace bench
