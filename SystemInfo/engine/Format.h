// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Row.h"

#include <QDateTime>

#include <optional>

namespace systeminfo
{

// Whole gigabytes (2^30 bytes), the rest dropped or counted as one more.
quint64 wholeGigabytes(quint64 bytes);
quint64 startedGigabytes(quint64 bytes);
Value gigabytes(quint64 count);

// The first 8 characters of WMI's "20120608000000.000000+000" -> "Fri Jun 8, 2012", in English; empty when
// they are no date.
QString wmiDate(const QString &stamp);

// A text as it is, a number in decimal, nothing for nothing.
Value decimal(std::optional<quint64> number, const QString &unit = {});
Value yesNo(std::optional<bool> flag);

// "3 days 4 hours 12 minutes"; below a minute "less than a minute".
QString durationText(quint64 seconds);
// In the local time of `when`: "2024-05-31 13:05"; empty for an invalid one.
QString timeText(const QDateTime &when);
// 100 ns since 1601, as FILETIME counts; 0 gives an invalid time.
QDateTime fromFileTime(quint64 ticks);

} // namespace systeminfo
