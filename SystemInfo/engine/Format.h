// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Row.h"

#include <QDateTime>

#include <optional>

namespace systeminfo
{

// Gigabytes (2^30 bytes), rounded down or up.
quint64 wholeGigabytes(quint64 bytes);
quint64 startedGigabytes(quint64 bytes);
Value gigabytes(quint64 count);

// Formats the first 8 characters of WMI's "20120608000000.000000+000" as "Fri Jun 8, 2012", in English; empty
// if they are not a date.
QString wmiDate(const QString &stamp);

// The number in decimal; an empty value for none.
Value decimal(std::optional<quint64> number, const QString &unit = {});
Value yesNo(std::optional<bool> flag);

// "3 days 4 hours 12 minutes", or "less than a minute".
QString durationText(quint64 seconds);
// In the local time of `when`: "2024-05-31 13:05"; empty if invalid.
QString timeText(const QDateTime &when);
// From FILETIME ticks (100 ns since 1601); 0 gives an invalid time.
QDateTime fromFileTime(quint64 ticks);

} // namespace systeminfo
