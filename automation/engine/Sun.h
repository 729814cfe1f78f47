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

// Parses the typed or stored numbers; nullopt if they are invalid or out of range.
std::optional<Position> parsePosition(const QString &latitude, const QString &longitude);

struct SunDay {
    // UTC. Unset if the sun does not cross the horizon on that day.
    std::optional<QDateTime> rise, set;
    bool up = false; // at noon: distinguishes polar day and polar night
};

// Sunrise and sunset for a date at a position (the solar day whose noon is nearest to 12:00 local solar
// time), by the formulas of NOAA's solar calculator (after Meeus, Astronomical Algorithms): upper limb on the
// horizon with standard refraction, zenith angle 90.833 degrees. Accurate to a minute below 72 degrees of
// latitude.
SunDay sunDay(const QDate &day, const Position &position);

} // namespace automation
