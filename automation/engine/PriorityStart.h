// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

// What a smart shortcut says to the program that it starts, LarkspurStart.exe: which program, with which
// arguments and how. A shortcut file comes from the disk and may hold anything.
//
//     /priority:high /processors:4 "C:\Tools\tool.exe" -x "a b"
//     |              |             |                  |
//     |              |             |                  handed over as it stands
//     |              |             the program, always in quotes
//     |              only where not all of them are to be used
//     always
namespace automation
{

inline constexpr QStringView starterName = u"LarkspurStart.exe";

// Windows' priority classes, but for "real time", with which a program can stop the whole PC.
enum class Priority { Idle, BelowNormal, Normal, AboveNormal, High };
inline constexpr int priorityCount = 5;

inline constexpr int maxProcessors = 64; // of a processor group
// The arguments of a shortcut, in UTF-16 code units. A shortcut file could hold more, but not every part of
// Windows hands on more.
inline constexpr qsizetype maxStartText = 2000;

struct PriorityStart {
    Priority priority = Priority::AboveNormal;
    int processors = 0; // at most that many of them; 0: all
    QString program;    // whole path
    QString arguments;

    bool operator==(const PriorityStart &) const = default;
};

// What stands in the shortcut; empty when the start cannot be written: see parseStart().
QString startText(const PriorityStart &start);

// Empty for a text that startText() has not written: the options in their order and each once, the whole path
// of an .exe or .com file, no control character, not more than maxStartText.
std::optional<PriorityStart> parseStart(QStringView text);

// What follows the program's own name in a whole command line.
QStringView argumentsOf(QStringView commandLine);

// The command line of the program that is started.
QString commandLineOf(const PriorityStart &start);

// Whether a priority can be given to what the path names: a program, by its whole path.
bool isStartable(QStringView path);

// The number that Windows has for it (winbase.h, HIGH_PRIORITY_CLASS and so on).
quint32 priorityClass(Priority priority);

// "Above normal".
QString priorityName(Priority priority);

// For a new shortcut, without the ending: the description that the program gives of itself, or else its file
// name, and the priority.
QString proposedName(const QString &description, const QString &program, Priority priority);

// Why no file can be called so, in words for the user; empty when one can.
QString nameProblem(QStringView name);

} // namespace automation
