// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/SizeText.h"

namespace core
{

QString sizeText(quint64 bytes)
{
    constexpr quint64 kilo = quint64{1} << 10;
    constexpr quint64 mega = quint64{1} << 20;
    constexpr quint64 giga = quint64{1} << 30;
    const auto inUnit = [bytes](quint64 unit) {
        return QString::number(static_cast<double>(bytes) / static_cast<double>(unit), 'f', 2);
    };
    if (bytes / giga >= 1)
        return inUnit(giga) + QStringLiteral(" GB");
    if (bytes / mega >= 1)
        return inUnit(mega) + QStringLiteral(" MB");
    return inUnit(kilo) + QStringLiteral(" KB");
}

} // namespace core
