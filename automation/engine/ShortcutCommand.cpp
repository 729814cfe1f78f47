// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/ShortcutCommand.h"

#include <QCoreApplication>
#include <QUrl>

#include <algorithm>
#include <iterator>

namespace automation
{

namespace
{

constexpr const char *modifierNames[] = {"Ctrl", "Shift", "Windows"};
constexpr const char *actionNames[] = {QT_TRANSLATE_NOOP("automation", "Open Windows 11 App:"),
                                       QT_TRANSLATE_NOOP("automation", "Open Folder:"),
                                       QT_TRANSLATE_NOOP("automation", "Open Website:"),
                                       QT_TRANSLATE_NOOP("automation", "Open Other App:"),
                                       QT_TRANSLATE_NOOP("automation", "Paste as Plain Text"),
                                       QT_TRANSLATE_NOOP("automation", "Restart Windows"),
                                       QT_TRANSLATE_NOOP("automation", "Shutdown Windows")};
constexpr qsizetype modifierDigits = 2;

// A character outside the BMP takes two code units.
qsizetype keyLength(QStringView text)
{
    if (text.isEmpty())
        return 0;
    return text.size() > 1 && text[0].isHighSurrogate() && text[1].isLowSurrogate() ? 2 : 1;
}

int digit(QChar character)
{
    return character >= u'0' && character <= u'9' ? character.unicode() - u'0' : -1;
}

std::optional<Modifier> modifierAt(QStringView text, qsizetype index)
{
    const int value = index < text.size() ? digit(text[index]) : -1;
    return value >= 0 && value <= static_cast<int>(Modifier::Windows)
               ? std::optional(static_cast<Modifier>(value))
               : std::nullopt;
}

bool isBuiltIn(QStringView command)
{
    return std::any_of(std::begin(builtInApps), std::end(builtInApps),
                       [command](const BuiltInApp &app) { return command == QLatin1String(app.command); });
}

// A path may contain ";" itself: the program ends at ".exe;", or else at the last ";".
qsizetype endOfProgram(const QString &argument)
{
    const QLatin1String ending(".exe;");
    const qsizetype found = argument.indexOf(ending, 0, Qt::CaseInsensitive);
    return found >= 0 ? found + ending.size() - 1 : argument.lastIndexOf(u';');
}

// Has a drive or server, as all paths chosen in the form have; a damaged text rarely does.
bool isWholePath(QStringView path)
{
    return path.startsWith(QLatin1String("\\\\")) ||
           (path.size() > 2 && path[1] == u':' && (path[2] == u'\\' || path[2] == u'/') &&
            path[0].isLetter());
}

bool readDelay(const QString &argument, int &delay)
{
    constexpr qsizetype maxDigits = 6;
    if (argument.isEmpty() || argument.size() > maxDigits ||
        !std::all_of(argument.cbegin(), argument.cend(), [](QChar c) { return digit(c) >= 0; }))
        return false;
    delay = argument.toInt();
    return delay <= maxDelay;
}

bool readArgument(const QString &argument, ShortcutCommand &command)
{
    switch (command.action) {
    case ShortcutAction::OpenBuiltInApp:
        command.target = argument.section(u';', 0, 0);
        command.workingFolder = argument.section(u';', 1);
        return isBuiltIn(command.target);
    case ShortcutAction::OpenFolder:
        command.target = argument;
        return isWholePath(argument);
    case ShortcutAction::OpenWebsite:
        command.target = argument;
        return !argument.isEmpty();
    case ShortcutAction::OpenOtherApp: {
        const qsizetype end = endOfProgram(argument);
        command.target = argument.left(end < 0 ? argument.size() : end);
        command.workingFolder = end < 0 ? QString() : argument.mid(end + 1);
        return isWholePath(command.target);
    }
    case ShortcutAction::PastePlainText:
        return argument.isEmpty();
    case ShortcutAction::Restart:
    case ShortcutAction::ShutDown:
        return readDelay(argument, command.delay);
    }
    return false;
}

QString argumentOf(const ShortcutCommand &command)
{
    switch (command.action) {
    case ShortcutAction::OpenBuiltInApp:
        return command.workingFolder.isEmpty() ? command.target
                                               : command.target + QLatin1Char(';') + command.workingFolder;
    case ShortcutAction::OpenFolder:
    case ShortcutAction::OpenWebsite:
        return command.target;
    case ShortcutAction::OpenOtherApp:
        return command.target + QLatin1Char(';') + command.workingFolder;
    case ShortcutAction::Restart:
    case ShortcutAction::ShutDown:
        return QString::number(command.delay);
    case ShortcutAction::PastePlainText:
        break;
    }
    return {};
}

QString namesJoined(Modifier first, Modifier second, QStringView key)
{
    return QLatin1String(modifierNames[static_cast<int>(first)]) + QLatin1Char('+') +
           QLatin1String(modifierNames[static_cast<int>(second)]) + QLatin1Char('+') + key.toString();
}

} // namespace

QString commandText(const ShortcutCommand &command)
{
    return QString::number(static_cast<int>(command.first)) +
           QString::number(static_cast<int>(command.second)) + command.key +
           QString::number(static_cast<int>(command.action)) + argumentOf(command);
}

std::optional<ShortcutCommand> parseCommand(const QString &text)
{
    const auto first = modifierAt(text, 0), second = modifierAt(text, 1);
    const qsizetype keySize = keyLength(QStringView(text).mid(std::min(modifierDigits, text.size())));
    const qsizetype code = modifierDigits + keySize;
    if (!first || !second || keySize == 0 || code >= text.size())
        return std::nullopt;
    const int action = digit(text[code]);
    ShortcutCommand command{*first, *second, text.mid(modifierDigits, keySize)};
    if (action < 0 || action > static_cast<int>(ShortcutAction::ShutDown) || command.key[0].isSpace() ||
        command.key[0].category() == QChar::Other_Control)
        return std::nullopt;
    command.action = static_cast<ShortcutAction>(action);
    return readArgument(text.mid(code + 1), command) ? std::optional(command) : std::nullopt;
}

QString keyText(const QString &command)
{
    const auto first = modifierAt(command, 0), second = modifierAt(command, 1);
    if (!first || !second)
        return command;
    const QStringView rest = QStringView(command).mid(modifierDigits);
    return namesJoined(*first, *second, rest.left(keyLength(rest)));
}

QString keyText(const ShortcutCommand &command)
{
    return namesJoined(command.first, command.second, command.key);
}

bool sameKeys(const QString &first, const QString &second)
{
    const auto a = parseCommand(first), b = parseCommand(second);
    if (!a || !b)
        return keyText(first) == keyText(second);
    const auto modifiers = [](const ShortcutCommand &command) {
        return (1 << static_cast<int>(command.first)) | (1 << static_cast<int>(command.second));
    };
    return modifiers(*a) == modifiers(*b) && a->key.compare(b->key, Qt::CaseInsensitive) == 0;
}

QString actionText(const QString &text)
{
    const auto command = parseCommand(text);
    if (!command)
        return QCoreApplication::translate("automation", "Cannot be read: %1").arg(text);
    const QString name =
        QCoreApplication::translate("automation", actionNames[static_cast<int>(command->action)]);
    if (command->target.isEmpty())
        return name;
    const QString folder = command->workingFolder.isEmpty() ? QString() : u';' + command->workingFolder;
    return name + QLatin1Char(' ') + command->target + folder;
}

QString openableAddress(const QString &typed)
{
    const QString text = typed.trimmed();
    if (text.isEmpty() || text.contains(QLatin1Char('\\')))
        return {};
    const bool hasScheme =
        text.contains(QLatin1String("://")) || text.startsWith(QLatin1String("mailto:"), Qt::CaseInsensitive);
    const QUrl address(hasScheme ? text : QLatin1String("https://") + text);
    const QString scheme = address.scheme();
    const bool web =
        (scheme == QLatin1String("http") || scheme == QLatin1String("https")) && !address.host().isEmpty();
    const bool mail = scheme == QLatin1String("mailto") && !address.path().isEmpty();
    return address.isValid() && (web || mail) ? address.toString(QUrl::FullyEncoded) : QString();
}

} // namespace automation
