// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/Sun.h"

#include <QTimeZone>

#include <cmath>
#include <numbers>

namespace automation
{

namespace
{

constexpr double zenith = 90.833;
constexpr double minutesOfDay = 1440;

double sine(double degrees)
{
    return std::sin(degrees * std::numbers::pi / 180);
}

double cosine(double degrees)
{
    return std::cos(degrees * std::numbers::pi / 180);
}

double inDegrees(double radians)
{
    return radians * 180 / std::numbers::pi;
}

struct Sky {
    double declination;    // degrees
    double equationOfTime; // minutes
};

// At a Julian day.
Sky skyAt(double julianDay)
{
    const double t = (julianDay - 2451545.0) / 36525; // centuries since J2000.0
    const double longitude = std::fmod(280.46646 + t * (36000.76983 + t * 0.0003032), 360);
    const double anomaly = 357.52911 + t * (35999.05029 - 0.0001537 * t);
    const double eccentricity = 0.016708634 - t * (0.000042037 + 0.0000001267 * t);
    const double centre = sine(anomaly) * (1.914602 - t * (0.004817 + 0.000014 * t)) +
                          sine(2 * anomaly) * (0.019993 - 0.000101 * t) + sine(3 * anomaly) * 0.000289;
    const double node = 125.04 - 1934.136 * t;
    const double apparent = longitude + centre - 0.00569 - 0.00478 * sine(node);
    const double obliquity =
        23 + (26 + (21.448 - t * (46.815 + t * (0.00059 - t * 0.001813))) / 60) / 60 + 0.00256 * cosine(node);
    const double half = std::tan(obliquity / 2 * std::numbers::pi / 180);
    const double y = half * half;
    const double equation = y * sine(2 * longitude) - 2 * eccentricity * sine(anomaly) +
                            4 * eccentricity * y * sine(anomaly) * cosine(2 * longitude) -
                            0.5 * y * y * sine(4 * longitude) -
                            1.25 * eccentricity * eccentricity * sine(2 * anomaly);
    return {inDegrees(std::asin(sine(obliquity) * sine(apparent))), 4 * inDegrees(equation)};
}

// Cosine of the hour angle of sunrise and sunset; above 1 the sun stays below the horizon, below -1 above it.
double crossing(const Position &position, const Sky &sky)
{
    return (cosine(zenith) - sine(position.latitude) * sine(sky.declination)) /
           (cosine(position.latitude) * cosine(sky.declination));
}

// `direction`: -1 for rise, 1 for set. Returns minutes after 0:00 UTC. Two iterations: the sun's position at
// noon gives an approximate time, and the position at that time the exact one. nullopt if the sun does not
// cross the horizon in either.
std::optional<double> crossingMinute(double midnight, const Position &position, int direction)
{
    double minute = minutesOfDay / 2 - 4 * position.longitude;
    for (int step = 0; step < 3; ++step) {
        const Sky sky = skyAt(midnight + minute / minutesOfDay);
        const double cosineOfAngle = crossing(position, sky);
        if (std::abs(cosineOfAngle) > 1)
            return {};
        minute = minutesOfDay / 2 - 4 * position.longitude - sky.equationOfTime +
                 direction * 4 * inDegrees(std::acos(cosineOfAngle));
    }
    return minute;
}

} // namespace

std::optional<Position> parsePosition(const QString &latitude, const QString &longitude)
{
    bool north = false, east = false;
    // Accepts a comma as decimal separator.
    const Position position{QString(latitude).replace(u',', u'.').toDouble(&north),
                            QString(longitude).replace(u',', u'.').toDouble(&east)};
    if (!north || !east || !(std::abs(position.latitude) <= 90) || !(std::abs(position.longitude) <= 180))
        return {};
    return position;
}

SunDay sunDay(const QDate &day, const Position &position)
{
    const double midnight = static_cast<double>(day.toJulianDay()) - 0.5;
    const auto moment = [&day](double minute) {
        const QDateTime start(day, QTime(0, 0), QTimeZone::utc());
        return start.addSecs(std::llround(minute * 60));
    };
    SunDay answer;
    if (const auto rise = crossingMinute(midnight, position, -1))
        answer.rise = moment(*rise);
    if (const auto set = crossingMinute(midnight, position, 1))
        answer.set = moment(*set);
    const Sky noon = skyAt(midnight + 0.5 - position.longitude / 360);
    answer.up = std::abs(position.latitude - noon.declination) < zenith;
    return answer;
}

} // namespace automation
