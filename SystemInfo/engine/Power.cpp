// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Format.h"
#include "SystemInfo/engine/General.h"

namespace systeminfo
{

namespace
{

constexpr quint8 unknown = 255;

// State and meaning appear on both sides of the replacement character: product wording.
QString explained(const QString &state, const QString &meaning)
{
    return state + QChar(u'\uFFFD') + meaning;
}

QString unknownStatus()
{
    return Words::tr("Unknown status");
}

// These two are tested first: 255 has every bit set, and "no battery" may be combined with other bits. A
// charge between 33 and 66 percent sets no bit and has no text.
QString chargeStatus(quint8 flag)
{
    if (flag == unknown)
        return explained(unknownStatus(), Words::tr("unable to read the battery flag information"));
    if (flag & 128)
        return Words::tr("No system battery");
    if (flag & 8)
        return Words::tr("Charging");
    if (flag & 4)
        return explained(Words::tr("Critical"),
                         Words::tr("the battery capacity is at less than five percent"));
    if (flag & 2)
        return explained(Words::tr("Low"), Words::tr("the battery capacity is at less than 33 percent"));
    if (flag & 1)
        return explained(Words::tr("High"), Words::tr("the battery capacity is at more than 66 percent"));
    return {};
}

Value lifeTime(qint32 seconds)
{
    return seconds < 0 ? Value(unknownStatus()) : Value::of(qint64(seconds), QStringLiteral("seconds"));
}

QString lineStatus(quint8 line)
{
    return line == 0 ? Words::tr("Offline") : line == 1 ? Words::tr("Online") : unknownStatus();
}

Value percent(quint8 number)
{
    return decimal(number, QStringLiteral("%"));
}

} // namespace

Row powerRow(const PowerStatus &power)
{
    const auto status = [&power](const Value &value) { return power.read ? value : Value(); };
    const auto capability = [&power](const Value &value) { return power.capabilitiesRead ? value : Value(); };
    Row top = section(SYSTEMINFO_LABEL("Power"), QStringLiteral("SysInfoPower16.png"));
    top.add(fact(SYSTEMINFO_LABEL("AC power status"), status(lineStatus(power.acLine))));
    top.add(fact(SYSTEMINFO_LABEL("Battery charge status"), status(chargeStatus(power.batteryFlag))));
    top.add(fact(SYSTEMINFO_LABEL("Battery life percentage"),
                 status(power.lifePercent == unknown ? Value(unknownStatus()) : percent(power.lifePercent))));
    top.add(fact(SYSTEMINFO_LABEL("Battery life remaining"), status(lifeTime(power.lifeSeconds))));
    top.add(fact(SYSTEMINFO_LABEL("Battery full life time"), status(lifeTime(power.fullLifeSeconds))));
    top.add(
        fact(SYSTEMINFO_LABEL("Processor throttling support"), capability(Value::yesNo(power.throttling))));
    top.add(fact(SYSTEMINFO_LABEL("Processor minimum power"), capability(percent(power.minimumThrottle))));
    top.add(fact(SYSTEMINFO_LABEL("Processor maximum power"), capability(percent(power.maximumThrottle))));
    return top;
}

} // namespace systeminfo
