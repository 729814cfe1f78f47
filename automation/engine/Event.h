// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

// What the background features decide upon. The agent turns what Windows tells into events and hands each to
// the rules of this folder, with the clock; a rule answers what is to be done and why, and when it wants to
// be asked again. Rules ask nobody and keep no clock, so that weeks are replayed in a test.
namespace automation
{

enum class EventKind {
    Reload, // the agent has begun, or the settings may have changed
    Due,    // the time that the rule asked for
    Resume, // after sleep
    ClockChange,
    Battery,      // value: percent left while on battery, -1 on mains
    Lid,          // value: 1 open, 0 closed; told once at first, which is no change
    Displays,     // number, size or colours of the monitors
    Session,      // unlocked, or used from another PC or from here again
    ProgramEnded, // the one that is waited for
    TaskbarMade,  // Explorer has started, perhaps again
    ThemeChanged, // by anybody
    Asked         // by the user, at this moment
};

struct Event {
    EventKind kind = EventKind::Reload;
    QDateTime now;    // local
    qint64 ticks = 0; // ms, goes on during sleep and does not follow changes of the clock
    int value = 0;
};

// A time of a day in the zone of `like`; an hour later where spring leaves it out.
QDateTime localMoment(const QDate &day, const QTime &time, const QDateTime &like);

// "19:02", and with the day when that is not today: "Mon 3 Nov 06:41".
QString momentText(const QDateTime &moment, const QDateTime &now);

} // namespace automation
