// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/AgentLog.h"

#include <QStringList>

namespace automation
{

namespace
{

constexpr qsizetype fieldCount = 4;

QString field(QString text)
{
    for (QChar &character : text) {
        if (character.unicode() < u' ')
            character = u' ';
    }
    return text;
}

} // namespace

QByteArray logLine(const LogEntry &entry)
{
    const QStringList fields{entry.time.toString(Qt::ISODate), field(entry.feature), field(entry.subject),
                             field(entry.text)};
    return fields.join(QLatin1Char('\t')).toUtf8() + '\n';
}

QList<LogEntry> parseLog(const QByteArray &bytes)
{
    QList<LogEntry> entries;
    const QByteArray whole = bytes.left(bytes.lastIndexOf('\n') + 1);
    for (const QByteArray &line : whole.split('\n')) {
        const QStringList fields = QString::fromUtf8(line).split(QLatin1Char('\t'));
        if (fields.size() != fieldCount)
            continue;
        const QDateTime time = QDateTime::fromString(fields[0], Qt::ISODate);
        if (time.isValid())
            entries.append({time, fields[1], fields[2], fields[3]});
    }
    return entries;
}

QByteArray newerHalf(const QByteArray &bytes)
{
    const QByteArray half = bytes.right(maxLogBytes / 2);
    return half.size() == bytes.size() ? bytes : half.mid(half.indexOf('\n') + 1);
}

} // namespace automation
