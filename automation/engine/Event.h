// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

// The events on which background features act. The agent converts Windows messages to events and passes each
// to the rules in this folder, together with the current time. A rule returns what to do and why, and when it
// wants the next Due event. Rules read no clock and no system state, so tests can simulate weeks.
namespace automation
{

enum class EventKind {
    Reload, // agent start, or settings may have changed
    Due,    // the time requested by the rule
    Resume, // wake-up from sleep
    ClockChange,
    Battery,      // value: percent while on battery, -1 on mains
    Lid,          // value: 1 open, 0 closed; also sent at start with the current state
    Displays,     // number, resolution or colour depth of the monitors changed
    Session,      // unlocked, or connected or disconnected remotely
    ProgramEnded, // the program that a rule waits for
    TaskbarMade,  // Explorer created the taskbar, possibly after a restart
    ThemeChanged, // by anyone
    Asked         // an immediate action of the user
};

struct Event {
    EventKind kind = EventKind::Reload;
    QDateTime now;    // local time
    qint64 ticks = 0; // ms, monotonic, includes sleep
    int value = 0;
};

// A time of day in the zone of `like`; shifted by an hour if daylight saving skips it.
QDateTime localMoment(const QDate &day, const QTime &time, const QDateTime &like);

// "19:02", or "Mon 3 Nov 06:41" if it is not today.
QString momentText(const QDateTime &moment, const QDateTime &now);

} // namespace automation
