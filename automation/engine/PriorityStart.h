// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

// The arguments that a smart shortcut passes to LarkspurStart.exe: which program to start, with which
// arguments and how. A shortcut file is untrusted.
//
//     /priority:high /processors:4 "C:\Tools\tool.exe" -x "a b"
//     |              |             |                  |
//     |              |             |                  passed on unchanged
//     |              |             the program, always quoted
//     |              only if limited to some processors
//     always
namespace automation
{

inline constexpr QStringView starterName = u"LarkspurStart.exe";

// Windows' priority classes except "real time", with which a program can freeze the PC.
enum class Priority { Idle, BelowNormal, Normal, AboveNormal, High };
inline constexpr int priorityCount = 5;

inline constexpr int maxProcessors = 64; // per processor group
// Limit for a shortcut's arguments, in UTF-16 code units. The file format allows more, but not all parts of
// Windows pass it on.
inline constexpr qsizetype maxStartText = 2000;

struct PriorityStart {
    Priority priority = Priority::AboveNormal;
    int processors = 0; // maximum number of processors; 0 for all
    QString program;    // full path
    QString arguments;

    bool operator==(const PriorityStart &) const = default;
};

// The arguments for the shortcut; empty if they would not be valid for parseStart().
QString startText(const PriorityStart &start);

// nullopt for a text that startText() could not have written. Requires: options in order and each at most
// once, the full path of an .exe or .com file, no control characters, at most maxStartText.
std::optional<PriorityStart> parseStart(QStringView text);

// The part of a command line after the program's own name.
QStringView argumentsOf(QStringView commandLine);

// The command line for the program to start.
QString commandLineOf(const PriorityStart &start);

// Whether the path can be started with a priority: the full path of a program.
bool isStartable(QStringView path);

// The constant of winbase.h, HIGH_PRIORITY_CLASS and so on.
quint32 priorityClass(Priority priority);

// "Above normal".
QString priorityName(Priority priority);

// Suggested name for a new shortcut, without extension: the program's description or file name, and the
// priority.
QString proposedName(const QString &description, const QString &program, Priority priority);

// Why this cannot be a file name, as a text for the user; empty if it can.
QString nameProblem(QStringView name);

} // namespace automation
