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
    QTime light, dark;                // clock times, unless bySun
    std::optional<Position> position; // required for bySun
    bool waitsForFullScreen = false;

    bool operator==(const DarkSettings &) const = default;
};

// Converts the format that Windows uses: hour 1 to 12, period 0 AM, 1 PM. 12 AM is midnight.
QTime fromTwelveHours(int hour, int minute, int period);

// A moment at which it becomes dark or light.
struct Boundary {
    QDateTime when; // local time
    bool dark = false;
    QString reason;     // "sunset"
    bool lasts = false; // no further switch, during a polar day or night
};
// The boundary that determines the current state, and the following one. nullopt if the settings are
// unusable, or if none follows within a year.
std::optional<Boundary> presentBoundary(const DarkSettings &settings, const QDateTime &now);
std::optional<Boundary> nextBoundary(const DarkSettings &settings, const QDateTime &now);
// One sentence about what would happen on a day.
QString dryRun(const DarkSettings &settings, const QDate &day, const QDateTime &now);

// State of the desktop at an event.
struct Desktop {
    std::optional<bool> dark; // nullopt if the parts to be switched differ
    bool fullScreen = false;  // a full-screen program is running
};

struct DarkDecision {
    std::optional<bool> switchTo; // true for dark
    QString why;                  // log text; empty if nothing changed
    QString now, next;            // shown by the form
    qint64 wakeAfter = -1;        // ms until the next Due; -1 for none
    QDateTime handled;            // the last boundary that was handled; stored across restarts of the agent
};

// Switches once at each boundary, so that changes made by the user in between are kept.
class DarkMode
{
public:
    explicit DarkMode(const QDateTime &handled = {}) : m_handled(handled) {}

    DarkDecision take(const Event &event, const DarkSettings &settings, const Desktop &desktop);

private:
    void pass(const Event &event, const Boundary &boundary, const Desktop &desktop, DarkDecision &decision);

    std::optional<DarkSettings> m_settings;
    QDateTime m_handled;
    std::optional<bool> m_shown; // the last known state of the desktop
};

} // namespace automation
