// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/RegFile.h"

#include <QStringBuilder>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace tracks
{

namespace
{

constexpr QStringView hiveName = u"HKEY_CURRENT_USER\\";
constexpr QStringView header = u"Windows Registry Editor Version 5.00";
constexpr qsizetype maxLine = 77; // before the continuation backslash, as the registry editor writes it

QString quoted(QStringView text)
{
    QString result = text.toString();
    result.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\""));
    return u'"' % result % u'"';
}

// The text of a REG_SZ, if a quoted string represents it exactly.
std::optional<QString> plainText(const RegistryValue &value)
{
    constexpr qsizetype unit = sizeof(char16_t);
    if (value.type != RegistryText || value.data.size() < unit || value.data.size() % unit != 0)
        return std::nullopt;
    QString text(value.data.size() / unit, Qt::Uninitialized);
    std::memcpy(text.data(), value.data.constData(), static_cast<std::size_t>(value.data.size()));
    if (text.indexOf(QChar::Null) != text.size() - 1 || text.contains(u'\r') || text.contains(u'\n'))
        return std::nullopt;
    text.chop(1);
    return text;
}

void appendHex(QString &out, const RegistryValue &value)
{
    qsizetype lineStart = out.lastIndexOf(u'\n') + 1;
    out += value.type == RegistryBinary ? QStringLiteral("hex:")
                                        : QStringLiteral("hex(%1):").arg(value.type, 0, 16);
    for (qsizetype at = 0; at < value.data.size(); ++at) {
        if (at > 0)
            out += u',';
        if (out.size() - lineStart > maxLine) {
            out += u"\\\r\n  ";
            lineStart = out.size() - 2;
        }
        out += QString::number(static_cast<quint8>(value.data[at]), 16).rightJustified(2, u'0');
    }
}

void appendValue(QString &out, const RegistryValue &value)
{
    out += value.name.isEmpty() ? QStringLiteral("@") : quoted(value.name);
    out += u'=';
    if (const std::optional<QString> text = plainText(value)) {
        out += quoted(*text);
    } else if (value.type == RegistryDword && value.data.size() == sizeof(quint32)) {
        const auto number = qFromLittleEndian<quint32>(value.data.constData());
        out += u"dword:" % QString::number(number, 16).rightJustified(8, u'0');
    } else {
        appendHex(out, value);
    }
    out += u"\r\n";
}

} // namespace

QByteArray regFile(const std::vector<RegistryKey> &keys)
{
    QString out = header % QStringLiteral("\r\n");
    for (const RegistryKey &key : keys) {
        out += u"\r\n[" % hiveName % key.path % u"]\r\n";
        for (const RegistryValue &value : key.values)
            appendValue(out, value);
    }
    out += u"\r\n";
    QByteArray bytes("\xFF\xFE");
    for (const QChar c : std::as_const(out)) {
        bytes += static_cast<char>(c.unicode() & 0xFF);
        bytes += static_cast<char>(c.unicode() >> 8);
    }
    return bytes;
}

std::vector<RegistryKey> foundKeys(const ScanResult &found, const ItemFlags &items)
{
    std::vector<RegistryKey> keys;
    for (const CatalogueRow &row : catalogue()) {
        if (!items[indexOf(row.item)])
            continue;
        for (const RegistryTrace &trace : found[row.item].values) {
            if (keys.empty() || keys.back().path != trace.key)
                keys.push_back({trace.key, trace.lastWriteTime, {}, {}});
            keys.back().values.push_back(trace.value);
        }
    }
    return keys;
}

bool isTraceKey(const QString &key)
{
    return std::any_of(catalogue().begin(), catalogue().end(), [&](const CatalogueRow &row) {
        const std::optional<KeySource> source = keySource(row.item);
        return source &&
               (key.compare(source->path(), Qt::CaseInsensitive) == 0 ||
                (source->withSubkeys && key.startsWith(source->path() % u'\\', Qt::CaseInsensitive)));
    });
}

bool putBack(const std::vector<RegistryKey> &keys, TraceRegistry &registry)
{
    bool all = true;
    for (const RegistryKey &key : keys) {
        all = registry.createKey(key.path) && all;
        for (const RegistryValue &value : key.values)
            all = registry.setValue(key.path, value) && all;
    }
    return all;
}

} // namespace tracks
