// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QDateTime>

#include <optional>

namespace automation
{

struct Position {
    double latitude = 0;  // degrees, north is positive
    double longitude = 0; // degrees, east is positive

    bool operator==(const Position &) const = default;
};

// The two numbers of a position as they are typed and stored; nothing when they are none or out of range.
std::optional<Position> parsePosition(const QString &latitude, const QString &longitude);

struct SunDay {
    // UTC. Without them the sun does not cross the horizon on that day.
    std::optional<QDateTime> rise, set;
    bool up = false; // at noon: tells a polar day from a polar night
};

// The sun of a calendar day of the place (the one whose solar noon is nearest to 12:00 local solar time), by
// the formulas of NOAA's solar calculator (after Meeus, Astronomical Algorithms): upper edge on the horizon
// with usual refraction, 90.833 degrees from the zenith. Good to a minute below 72 degrees of latitude.
SunDay sunDay(const QDate &day, const Position &position);

} // namespace automation
