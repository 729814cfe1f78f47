// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/RegistryView.h"

#include <QtEndian>

namespace core
{

RegistryValue RegistryValue::ofText(const QString &value)
{
    const qsizetype size = (value.size() + 1) * qsizetype(sizeof(QChar));
    return {text, QByteArray(reinterpret_cast<const char *>(value.constData()), size)};
}

RegistryValue RegistryValue::ofNumber(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(value, bytes.data());
    return {dword, bytes};
}

QString RegistryValue::toText() const
{
    if (type != text && type != expandableText && type != binary && type != multiText)
        return {};
    QString result(bytes.size() / 2, Qt::Uninitialized);
    qFromLittleEndian<quint16>(bytes.constData(), result.size(), result.data());
    const qsizetype end = result.indexOf(QChar(0));
    return end < 0 ? result : result.left(end);
}

std::optional<quint64> RegistryValue::toNumber() const
{
    if (bytes.size() == 4 && (type == dword || type == binary))
        return qFromLittleEndian<quint32>(bytes.constData());
    if (bytes.size() == 8 && (type == qword || type == binary))
        return qFromLittleEndian<quint64>(bytes.constData());
    return {};
}

} // namespace core
