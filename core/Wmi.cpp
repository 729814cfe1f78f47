// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Wmi.h"

namespace core
{

WmiRow::WmiRow(std::initializer_list<std::pair<QString, QVariant>> values)
{
    for (const auto &[name, value] : values)
        m_values.insert(name, value);
}

QString WmiRow::text(const QString &name) const
{
    return m_values.value(name).toString();
}

std::optional<qint64> WmiRow::integer(const QString &name) const
{
    bool valid = false;
    const qint64 number = m_values.value(name).toLongLong(&valid);
    return valid ? std::optional(number) : std::nullopt;
}

std::optional<quint64> WmiRow::unsignedInteger(const QString &name) const
{
    const QVariant value = m_values.value(name);
    bool valid = false;
    const quint64 number = value.typeId() == QMetaType::Int ? static_cast<quint32>(value.toInt(&valid))
                                                            : value.toULongLong(&valid);
    return valid ? std::optional(number) : std::nullopt;
}

std::optional<bool> WmiRow::flag(const QString &name) const
{
    const std::optional<qint64> number = integer(name);
    return number ? std::optional(*number != 0) : std::nullopt;
}

QStringList WmiRow::list(const QString &name) const
{
    return m_values.value(name).toStringList();
}

} // namespace core
