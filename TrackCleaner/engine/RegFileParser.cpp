// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/RegFile.h"

#include <QStringBuilder>
#include <QtEndian>

#include <optional>
#include <utility>

namespace tracks
{

namespace
{

constexpr QStringView hiveName = u"HKEY_CURRENT_USER\\";
constexpr QStringView header = u"Windows Registry Editor Version 5.00";
constexpr qsizetype maxBytes = qsizetype{64} << 20; // thousands of times the size of such keys
constexpr qsizetype maxKeyPath = 2048;              // the catalogue's keys have about 100
constexpr qsizetype maxValueName = 16383;           // limit of Windows

std::optional<QString> textOf(const QByteArray &bytes)
{
    if (bytes.size() > maxBytes || bytes.size() % 2 != 0 || !bytes.startsWith("\xFF\xFE"))
        return std::nullopt;
    QString text((bytes.size() - 2) / 2, Qt::Uninitialized);
    for (qsizetype at = 0; at < text.size(); ++at)
        text[at] = QChar(qFromLittleEndian<char16_t>(bytes.constData() + 2 + 2 * at));
    return text;
}

// Parses a quoted string at the start of `line` and removes it from there.
std::optional<QString> takeQuoted(QStringView &line)
{
    if (!line.startsWith(u'"'))
        return std::nullopt;
    QString text;
    for (qsizetype at = 1; at < line.size(); ++at) {
        if (line[at] == u'"') {
            line = line.sliced(at + 1);
            return text;
        }
        if (line[at] == u'\\' && ++at == line.size())
            break;
        text += line[at];
    }
    return std::nullopt;
}

QByteArray storedText(const QString &text)
{
    QByteArray data;
    for (const QChar c : text) {
        data += static_cast<char>(c.unicode() & 0xFF);
        data += static_cast<char>(c.unicode() >> 8);
    }
    return data + QByteArray(2, '\0');
}

std::optional<QByteArray> hexBytes(QStringView text)
{
    QByteArray bytes;
    if (text.trimmed().isEmpty())
        return bytes;
    for (const QStringView part : text.split(u',')) {
        bool isNumber = false;
        const QStringView digits = part.trimmed();
        const uint byte = digits.size() <= 2 ? digits.toUInt(&isNumber, 16) : 0;
        if (!isNumber)
            return std::nullopt;
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

// `hex:…`, `hex(7):…`
std::optional<RegistryValue> hexValue(QStringView text)
{
    text = text.sliced(3);
    RegistryValue value{{}, RegistryBinary, {}};
    const qsizetype colon = text.indexOf(u':');
    if (colon < 0)
        return std::nullopt;
    if (colon > 0) {
        bool isNumber = false;
        const QStringView type = text.first(colon);
        if (type.size() < 3 || !type.startsWith(u'(') || !type.endsWith(u')'))
            return std::nullopt;
        value.type = type.sliced(1, type.size() - 2).toUInt(&isNumber, 16);
        if (!isNumber)
            return std::nullopt;
    }
    std::optional<QByteArray> bytes = hexBytes(text.sliced(colon + 1));
    if (!bytes)
        return std::nullopt;
    value.data = std::move(*bytes);
    return value;
}

std::optional<RegistryValue> valueOf(QStringView text)
{
    if (text.startsWith(u"hex"))
        return hexValue(text);
    if (text.startsWith(u"dword:")) {
        bool isNumber = false;
        const quint32 number = text.size() <= 14 ? text.sliced(6).toUInt(&isNumber, 16) : 0;
        QByteArray data(sizeof number, '\0');
        qToLittleEndian(number, data.data());
        return isNumber ? std::optional(RegistryValue{{}, RegistryDword, data}) : std::nullopt;
    }
    const std::optional<QString> string = takeQuoted(text);
    if (!string || !text.trimmed().isEmpty())
        return std::nullopt;
    return RegistryValue{{}, RegistryText, storedText(*string)};
}

class Parser
{
public:
    RegFileContent parse(const QString &text);

private:
    bool next(QString &line);
    RegFileFault meet(QStringView line);
    RegFileFault meetKey(QStringView line);
    RegFileFault meetValue(QStringView line);

    QList<QStringView> m_lines;
    qsizetype m_next = 0;
    RegFileContent m_content;
};

// Reads a line together with its continuation lines.
bool Parser::next(QString &line)
{
    line.clear();
    while (m_next < m_lines.size()) {
        const QStringView part = m_lines[m_next++].trimmed();
        line += part;
        // A value name may end in a backslash too, but is followed by a quotation mark.
        if (!part.endsWith(u'\\'))
            return true;
        line.chop(1);
    }
    return !line.isEmpty();
}

RegFileContent Parser::parse(const QString &text)
{
    m_lines = QStringView(text).split(u'\n');
    QString line;
    next(line);
    if (line != header)
        return {RegFileFault::NotARegFile, 1, {}};
    while (next(line)) {
        const RegFileFault fault = meet(line);
        if (fault != RegFileFault::None)
            return {fault, static_cast<int>(m_next), {}};
    }
    return std::move(m_content);
}

RegFileFault Parser::meet(QStringView line)
{
    if (line.isEmpty() || line.startsWith(u';'))
        return RegFileFault::None;
    return line.startsWith(u'[') ? meetKey(line) : meetValue(line);
}

RegFileFault Parser::meetKey(QStringView line)
{
    if (line.startsWith(u"[-"))
        return RegFileFault::Deletions;
    if (!line.endsWith(u']') || line.size() > maxKeyPath)
        return RegFileFault::Damaged;
    const QStringView path = line.sliced(1, line.size() - 2);
    if (!path.startsWith(hiveName, Qt::CaseInsensitive))
        return RegFileFault::OtherKeys;
    const QString key = path.sliced(hiveName.size()).toString();
    if (!isTraceKey(key) || key.endsWith(u'\\') || key.contains(u"\\\\") || key.contains(QChar::Null))
        return RegFileFault::OtherKeys;
    m_content.keys.push_back({key, 0, {}, {}});
    return RegFileFault::None;
}

RegFileFault Parser::meetValue(QStringView line)
{
    if (m_content.keys.empty())
        return RegFileFault::Damaged;
    std::optional<QString> name = QString();
    if (line.startsWith(u'@'))
        line = line.sliced(1);
    else
        name = takeQuoted(line);
    if (!name || name->size() > maxValueName || !line.startsWith(u'='))
        return RegFileFault::Damaged;
    line = line.sliced(1);
    if (line == u"-")
        return RegFileFault::Deletions;
    std::optional<RegistryValue> value = valueOf(line);
    if (!value)
        return RegFileFault::Damaged;
    value->name = *name;
    m_content.keys.back().values.push_back(std::move(*value));
    return RegFileFault::None;
}

} // namespace

RegFileContent parseRegFile(const QByteArray &bytes)
{
    const std::optional<QString> text = textOf(bytes);
    return text ? Parser().parse(*text) : RegFileContent{RegFileFault::NotARegFile, 1, {}};
}

} // namespace tracks
