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

// The features by the names that log and settings know them by.
namespace features
{
inline constexpr QStringView shortcutKeys = u"Shortcut keys";
inline constexpr QStringView stayAwake = u"Stay awake";
inline constexpr QStringView autoDarkMode = u"Auto dark mode";
inline constexpr QStringView trayIcon = u"Tray icon";
inline constexpr QStringView taskbar = u"Transparent taskbar";
inline constexpr QStringView wallpaper = u"Wallpaper changer";
} // namespace features

struct LogEntry {
    QDateTime time;
    QString feature; // one of the above
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
