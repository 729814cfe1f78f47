// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

// What the background agent did and why not, one line each, for the forms to show. UTF-8, fields separated by
// tabs: local time in ISO form, feature, subject, text.
namespace automation
{

// Of the whole file; the older half goes when it is full.
inline constexpr qsizetype maxLogBytes = 64 * 1024;

struct LogEntry {
    QDateTime time;
    QString feature; // "hot keys"
    QString subject; // "Ctrl+Shift+K"
    QString text;    // "notepad was started"

    bool operator==(const LogEntry &) const = default;
};

// With its line feed; line feeds and tabs in the fields become spaces.
QByteArray logLine(const LogEntry &entry);

// Whole lines only, newest last; lines that are none of ours are passed over.
QList<LogEntry> parseLog(const QByteArray &bytes);

// What is kept of a full log: whole lines, at most half of maxLogBytes.
QByteArray newerHalf(const QByteArray &bytes);

// Below the user's local application data.
inline QString agentLogPath(const QString &localAppData)
{
    return localAppData + QStringLiteral("\\Fernlight Larkspur\\Agent.log");
}

} // namespace automation
