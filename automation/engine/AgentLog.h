// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

// The log of the background agent, shown by the forms. One line per event, UTF-8, fields separated by tabs:
// local time in ISO format, feature, subject, text.
namespace automation
{

// Limit for the file; when it is reached, the older half is dropped.
inline constexpr qsizetype maxLogBytes = 64 * 1024;

// Names of the features in the log and in the settings.
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

// Includes the line feed; line feeds and tabs within fields become spaces.
QByteArray logLine(const LogEntry &entry);

// Complete lines only, newest last; lines in another format are skipped.
QList<LogEntry> parseLog(const QByteArray &bytes);

// What remains of a full log: complete lines, at most half of maxLogBytes.
QByteArray newerHalf(const QByteArray &bytes);

// Relative to the user's local application data.
inline QString agentLogPath(const QString &localAppData)
{
    return localAppData + QStringLiteral("\\Fernlight Larkspur\\Agent.log");
}

} // namespace automation
