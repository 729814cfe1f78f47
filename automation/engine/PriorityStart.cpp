// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/PriorityStart.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace automation
{

namespace
{

struct PriorityRow {
    const char *word; // in the stored form
    quint32 number;   // see winbase.h
    const char *name;
};
constexpr PriorityRow priorities[] = {{"idle", 0x40, QT_TRANSLATE_NOOP("automation", "Idle")},
                                      {"below", 0x4000, QT_TRANSLATE_NOOP("automation", "Below normal")},
                                      {"normal", 0x20, QT_TRANSLATE_NOOP("automation", "Normal")},
                                      {"above", 0x8000, QT_TRANSLATE_NOOP("automation", "Above normal")},
                                      {"high", 0x80, QT_TRANSLATE_NOOP("automation", "High")}};
static_assert(std::size(priorities) == priorityCount);

constexpr QStringView priorityOption = u"/priority:";
constexpr QStringView processorsOption = u"/processors:";
constexpr qsizetype maxName = 200; // leaves room for the folder within Windows' limit of 260

QString tr(const char *text)
{
    return QCoreApplication::translate("automation", text);
}

bool isControl(QChar character)
{
    return character.category() == QChar::Other_Control;
}

// Removes "/option:value " from the start of `text` and returns the value; empty if it is not there.
QStringView takeOption(QStringView &text, QStringView option)
{
    if (!text.startsWith(option))
        return {};
    const qsizetype end = text.indexOf(u' ');
    const QStringView value = text.mid(option.size(), end < 0 ? -1 : end - option.size());
    text = end < 0 ? QStringView() : text.mid(end + 1);
    return value;
}

std::optional<Priority> priorityOf(QStringView word)
{
    const auto *found =
        std::find_if(std::begin(priorities), std::end(priorities),
                     [word](const PriorityRow &row) { return word == QLatin1String(row.word); });
    return found == std::end(priorities)
               ? std::nullopt
               : std::optional(static_cast<Priority>(std::distance(std::begin(priorities), found)));
}

// Accepts only the form that startText() writes: no sign, no leading zero.
bool readProcessors(QStringView &text, int &processors)
{
    if (!text.startsWith(processorsOption))
        return true;
    const QStringView value = takeOption(text, processorsOption);
    processors = value.toInt();
    return processors >= 1 && processors <= maxProcessors && value == QString::number(processors);
}

bool isReservedName(QStringView name)
{
    const QString base = name.left(name.indexOf(u'.')).trimmed().toString().toUpper();
    for (const char *word : {"CON", "PRN", "AUX", "NUL"}) {
        if (base == QLatin1String(word))
            return true;
    }
    return base.size() == 4 &&
           (base.startsWith(QLatin1String("COM")) || base.startsWith(QLatin1String("LPT"))) &&
           base[3].isDigit();
}

} // namespace

bool isStartable(QStringView path)
{
    const bool onDrive =
        path.size() > 3 && path[0].isLetter() && path[0] < QChar(0x80) && path[1] == u':' && path[2] == u'\\';
    const bool onServer = path.startsWith(QLatin1String("\\\\")) && path.size() > 3 && path[2] != u'?' &&
                          path[2] != u'.' && path[2] != u'\\';
    const QStringView rest = path.mid(onDrive ? 2 : 0);
    const bool isProgram = path.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive) ||
                           path.endsWith(QLatin1String(".com"), Qt::CaseInsensitive);
    return (onDrive || onServer) && isProgram && std::none_of(rest.begin(), rest.end(), [](QChar character) {
               return isControl(character) || QStringView(u"/:*?\"<>|").contains(character);
           });
}

QString startText(const PriorityStart &start)
{
    QString text =
        priorityOption.toString() + QLatin1String(priorities[static_cast<int>(start.priority)].word) + u' ';
    if (start.processors > 0)
        text += processorsOption.toString() + QString::number(start.processors) + u' ';
    text += u'"' + start.program + u'"';
    if (!start.arguments.isEmpty())
        text += u' ' + start.arguments;
    return parseStart(text) == start ? text : QString();
}

std::optional<PriorityStart> parseStart(QStringView text)
{
    if (text.size() > maxStartText || std::any_of(text.begin(), text.end(), isControl))
        return std::nullopt;
    PriorityStart start;
    const std::optional<Priority> priority = priorityOf(takeOption(text, priorityOption));
    if (!priority || !readProcessors(text, start.processors) || !text.startsWith(u'"'))
        return std::nullopt;
    start.priority = *priority;
    const qsizetype end = text.indexOf(u'"', 1);
    if (end < 0 || !isStartable(text.mid(1, end - 1)))
        return std::nullopt;
    start.program = text.mid(1, end - 1).toString();
    const QStringView rest = text.mid(end + 1);
    if (!rest.isEmpty() && (rest[0] != u' ' || rest.size() == 1))
        return std::nullopt;
    start.arguments = rest.mid(rest.isEmpty() ? 0 : 1).toString();
    return start;
}

// The program name ends at the closing quote or, if it is not quoted, at the first blank: the C runtime's
// backslash rules do not apply to it.
QStringView argumentsOf(QStringView commandLine)
{
    const auto isBlank = [](QChar character) { return character == u' ' || character == u'\t'; };
    qsizetype end = 0;
    if (commandLine.startsWith(u'"')) {
        end = commandLine.indexOf(u'"', 1);
        end = end < 0 ? commandLine.size() : end + 1;
    } else {
        while (end < commandLine.size() && !isBlank(commandLine[end]))
            ++end;
    }
    while (end < commandLine.size() && isBlank(commandLine[end]))
        ++end;
    return commandLine.mid(end);
}

QString commandLineOf(const PriorityStart &start)
{
    const QString program = u'"' + start.program + u'"';
    return start.arguments.isEmpty() ? program : program + u' ' + start.arguments;
}

quint32 priorityClass(Priority priority)
{
    return priorities[static_cast<int>(priority)].number;
}

QString priorityName(Priority priority)
{
    return tr(priorities[static_cast<int>(priority)].name);
}

QString proposedName(const QString &description, const QString &program, Priority priority)
{
    QString base = description.simplified();
    if (base.isEmpty()) {
        base = program.mid(program.lastIndexOf(u'\\') + 1);
        base.truncate(std::max(qsizetype(0), base.lastIndexOf(u'.')));
    }
    const QString forbidden = QStringLiteral("\\/:*?\"<>|");
    base.removeIf(
        [&forbidden](QChar character) { return forbidden.contains(character) || isControl(character); });
    constexpr qsizetype longest = 60;
    base = base.left(longest).trimmed();
    return base.isEmpty() ? QString() : tr("%1 (%2 priority)").arg(base, priorityName(priority).toLower());
}

QString nameProblem(QStringView name)
{
    const auto isForbidden = [](QChar character) {
        return isControl(character) || QStringView(u"\\/:*?\"<>|").contains(character);
    };
    if (name.trimmed().isEmpty())
        return tr("Type a name for the shortcut.");
    if (std::any_of(name.begin(), name.end(), isForbidden))
        return tr("A name cannot hold any of \\ / : * ? \" < > |");
    if (name.startsWith(u' ') || name.endsWith(u' ') || name.endsWith(u'.'))
        return tr("A name cannot begin with a space, or end with a space or a dot.");
    if (name.size() > maxName)
        return tr("This name is too long.");
    if (isReservedName(name))
        return tr("Windows keeps this name for a device.");
    return {};
}

} // namespace automation
