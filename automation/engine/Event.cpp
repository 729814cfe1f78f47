// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/Event.h"

#include <QLocale>

namespace automation
{

QString momentText(const QDateTime &moment, const QDateTime &now)
{
    const bool today = moment.date() == now.date();
    return QLocale::c().toString(moment, today ? QStringLiteral("HH:mm") : QStringLiteral("ddd d MMM HH:mm"));
}

} // namespace automation
