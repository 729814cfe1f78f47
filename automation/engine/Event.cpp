// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/Event.h"

#include <QLocale>

namespace automation
{

QDateTime localMoment(const QDate &day, const QTime &time, const QDateTime &like)
{
    QDateTime local = like;
    local.setTime(QTime(12, 0));
    local.setDate(day);
    local.setTime(time);
    if (!local.isValid())
        local.setTime(time.addSecs(3600));
    return local;
}

QString momentText(const QDateTime &moment, const QDateTime &now)
{
    const bool today = moment.date() == now.date();
    return QLocale::c().toString(moment, today ? QStringLiteral("HH:mm") : QStringLiteral("ddd d MMM HH:mm"));
}

} // namespace automation
