// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Format.h"

#include <QLocale>
#include <QTimeZone>

namespace systeminfo
{

namespace
{

constexpr quint64 gigabyte = quint64(1) << 30;

} // namespace

quint64 wholeGigabytes(quint64 bytes)
{
    return bytes / gigabyte;
}

quint64 startedGigabytes(quint64 bytes)
{
    return bytes / gigabyte + (bytes % gigabyte ? 1 : 0);
}

Value gigabytes(quint64 count)
{
    return Value::of(static_cast<qint64>(count), QStringLiteral("GB"));
}

QString wmiDate(const QString &stamp)
{
    const QDate date = QDate::fromString(stamp.left(8), QStringLiteral("yyyyMMdd"));
    return date.isValid() ? QLocale::c().toString(date, QStringLiteral("ddd MMM d, yyyy")) : QString();
}

Value decimal(std::optional<quint64> number, const QString &unit)
{
    if (!number)
        return {};
    Value value(QString::number(*number) + unit);
    value.number = *number;
    value.unit = unit.trimmed();
    return value;
}

Value yesNo(std::optional<bool> flag)
{
    return flag ? Value::yesNo(*flag) : Value();
}

QString durationText(quint64 seconds)
{
    const auto days = static_cast<int>(seconds / 86400);
    const auto hours = static_cast<int>(seconds / 3600 % 24);
    const auto minutes = static_cast<int>(seconds / 60 % 60);
    QStringList parts;
    if (days)
        parts << (days == 1 ? Words::tr("1 day") : Words::tr("%1 days").arg(days));
    if (hours)
        parts << (hours == 1 ? Words::tr("1 hour") : Words::tr("%1 hours").arg(hours));
    if (minutes)
        parts << (minutes == 1 ? Words::tr("1 minute") : Words::tr("%1 minutes").arg(minutes));
    return parts.isEmpty() ? Words::tr("less than a minute") : parts.join(QLatin1Char(' '));
}

QString timeText(const QDateTime &when)
{
    return when.isValid() ? when.toString(QStringLiteral("yyyy-MM-dd HH:mm")) : QString();
}

QDateTime fromFileTime(quint64 ticks)
{
    // Milliseconds from 1601 to 1970. A tick count with the sign bit set would be 29,000 years in the future.
    constexpr qint64 epoch = 11644473600000;
    if (ticks == 0 || ticks >> 63)
        return {};
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(ticks / 10000) - epoch);
}

} // namespace systeminfo
