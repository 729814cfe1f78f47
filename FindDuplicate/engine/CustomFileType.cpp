// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/CustomFileType.h"

#include <algorithm>

namespace duplicates
{

namespace
{

void appendEscaped(QString &to, const QString &field)
{
    for (const QChar c : field) {
        if (c == u'\0') {
            to += u"\\0";
            continue;
        }
        if (c == u';' || c == u'\\')
            to += u'\\';
        to += c;
    }
}

// The character for an escape sequence, given the character after the backslash.
std::optional<QChar> unescaped(QChar escaped)
{
    if (escaped == u';' || escaped == u'\\')
        return escaped;
    if (escaped == u'0')
        return QChar(u'\0');
    return std::nullopt;
}

std::optional<QStringList> splitFields(const QString &stored)
{
    QStringList fields{QString()};
    for (qsizetype i = 0; i < stored.size(); ++i) {
        const QChar c = stored[i];
        if (c == u';') {
            fields.append(QString());
            continue;
        }
        if (c == u'\0')
            return std::nullopt;
        if (c != u'\\') {
            fields.last() += c;
            continue;
        }
        if (++i == stored.size())
            return std::nullopt;
        const std::optional<QChar> meant = unescaped(stored[i]);
        if (!meant)
            return std::nullopt;
        fields.last() += *meant;
    }
    return fields;
}

} // namespace

bool CustomFileType::isValid() const
{
    const auto usable = [](const QString &extension) {
        return extension.size() > 1 && extension.startsWith(u'.');
    };
    return !name.isEmpty() && !extensions.isEmpty() &&
           std::all_of(extensions.cbegin(), extensions.cend(), usable);
}

QString CustomFileType::storedText() const
{
    QString stored;
    appendEscaped(stored, name);
    for (const QString &extension : extensions) {
        stored += u';';
        appendEscaped(stored, extension);
    }
    return stored;
}

std::optional<CustomFileType> parseStoredCustomFileType(const QString &stored)
{
    std::optional<QStringList> fields = splitFields(stored);
    if (!fields)
        return std::nullopt;
    CustomFileType type;
    type.name = fields->takeFirst();
    type.extensions = *fields;
    if (!type.isValid())
        return std::nullopt;
    return type;
}

} // namespace duplicates
