// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Event.h"
#include "automation/engine/Sun.h"

#include <QTime>

#include <optional>

namespace automation
{

struct DarkSettings {
    bool enabled = false;
    bool bySun = false;
    QTime light, dark;                // of the clock, unless by the sun
    std::optional<Position> position; // by the sun only
    bool waitsForFullScreen = false;

    bool operator==(const DarkSettings &) const = default;
};

// As Windows stores it: hour 1 to 12, period 0 AM, 1 PM. 12 AM is midnight.
QTime fromTwelveHours(int hour, int minute, int period);

// The moment from which on it is to be dark, or light.
struct Boundary {
    QDateTime when; // local
    bool dark = false;
    QString reason;     // "sunset"
    bool lasts = false; // a polar day or night
};
// The one that the present moment is ruled by, and the one that follows. Nothing without usable settings, or
// where none follows within a year.
std::optional<Boundary> presentBoundary(const DarkSettings &settings, const QDateTime &now);
std::optional<Boundary> nextBoundary(const DarkSettings &settings, const QDateTime &now);
// What will happen on a day, in a sentence.
QString dryRun(const DarkSettings &settings, const QDate &day, const QDateTime &now);

// What the desktop is like at an event.
struct Desktop {
    std::optional<bool> dark; // of what is to be switched; nothing while its parts differ
    bool fullScreen = false;  // a program covers the screen
};

struct DarkDecision {
    std::optional<bool> switchTo; // dark
    QString why;                  // for the log; empty while nothing changed
    QString now, next;            // for the form
    qint64 wakeAfter = -1;        // ms until Due; -1: not wanted
    QDateTime handled;            // the boundary that was seen to, kept over the agent's end
};

// Switches at the boundaries, once each: a change that the user makes between two is respected.
class DarkMode
{
public:
    explicit DarkMode(const QDateTime &handled = {}) : m_handled(handled) {}

    DarkDecision take(const Event &event, const DarkSettings &settings, const Desktop &desktop);

private:
    void pass(const Event &event, const Boundary &boundary, const Desktop &desktop, DarkDecision &decision);

    std::optional<DarkSettings> m_settings;
    QDateTime m_handled;
    std::optional<bool> m_shown; // what the desktop was like when it was last seen
};

} // namespace automation
