// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The stored form of a keyboard shortcut: what the form writes, what the background agent carries out. A
// stored text comes from the registry and may hold anything.
//
//     01K0notepad        Ctrl+Shift+K opens Notepad
//     |||||
//     |||| argument
//     ||| action code, one digit
//     || the key, one character
//     | second modifier, index
//     first modifier, index
namespace automation
{

// The indices are stored.
enum class Modifier { Ctrl = 0, Shift = 1, Windows = 2 };

// The codes are stored.
enum class ShortcutAction {
    OpenBuiltInApp = 0,
    OpenFolder = 1,
    OpenWebsite = 2,
    OpenOtherApp = 3,
    PastePlainText = 4,
    Restart = 5,
    ShutDown = 6
};

struct BuiltInApp {
    const char *command; // stored, and what is started
    const char *name;    // for the user
};
inline constexpr BuiltInApp builtInApps[] = {{"calc", "Calculator"},    {"charmap", "Character Map"},
                                             {"cmd", "Command Prompt"}, {"explorer", "Explorer"},
                                             {"notepad", "Notepad"},    {"powershell", "Power Shell"}};

// A day: longer delays are mistakes.
inline constexpr int maxDelay = 24 * 60 * 60; // seconds

struct ShortcutCommand {
    Modifier first = Modifier::Ctrl;
    Modifier second = Modifier::Shift;
    QString key;
    ShortcutAction action = ShortcutAction::OpenBuiltInApp;
    // A command of builtInApps, a folder, an address or the path of a program; empty for the others.
    QString target;
    QString workingFolder; // of the two that start programs; may be empty
    int delay = 0;         // seconds, of Restart and ShutDown

    bool uses(Modifier modifier) const { return first == modifier || second == modifier; }
    bool operator==(const ShortcutCommand &) const = default;
};

// The stored form. A working folder that is empty leaves ";" behind the path of a program, and nothing behind
// a built-in one.
QString commandText(const ShortcutCommand &command);

// Empty for a text that is not exactly such a form: a key of one character, an action code that exists, and
// an argument of its kind (one of builtInApps; a whole path; digits of at most a day for a delay; none for
// pasting).
std::optional<ShortcutCommand> parseCommand(const QString &text);

// "Ctrl+Shift+K" of a stored text, however damaged the rest of it is; the text itself where not even the
// modifiers can be read.
QString keyText(const QString &command);
QString keyText(const ShortcutCommand &command);

// Whether Windows takes both for one combination: neither the order of the modifiers nor the case of the
// letter counts. Damaged texts are the same only when they are equal.
bool sameKeys(const QString &first, const QString &second);

// "Open Windows 11 App: notepad".
QString actionText(const QString &command);

// An address that a browser opens, "https://" put before one without a scheme; empty for what is not a web
// page or a mail address, such as a program.
QString openableAddress(const QString &typed);

} // namespace automation
