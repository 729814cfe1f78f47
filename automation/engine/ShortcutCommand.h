// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The stored form of a keyboard shortcut, written by the form and executed by the background agent. A stored
// text is untrusted.
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
    const char *command; // stored, and executed
    const char *name;    // for display
};
inline constexpr BuiltInApp builtInApps[] = {{"calc", "Calculator"},    {"charmap", "Character Map"},
                                             {"cmd", "Command Prompt"}, {"explorer", "Explorer"},
                                             {"notepad", "Notepad"},    {"powershell", "Power Shell"}};

// One day: longer delays are considered mistakes.
inline constexpr int maxDelay = 24 * 60 * 60; // seconds

struct ShortcutCommand {
    Modifier first = Modifier::Ctrl;
    Modifier second = Modifier::Shift;
    QString key;
    ShortcutAction action = ShortcutAction::OpenBuiltInApp;
    // One of builtInApps, a folder, an address or a program path; empty for other actions.
    QString target;
    QString workingFolder; // for the two actions that start programs; may be empty
    int delay = 0;         // seconds, for Restart and ShutDown

    bool uses(Modifier modifier) const { return first == modifier || second == modifier; }
    bool operator==(const ShortcutCommand &) const = default;
};

// The stored form. With an empty working folder, a program path is still followed by ";", a built-in command
// is not.
QString commandText(const ShortcutCommand &command);

// nullopt unless the text is exactly of this form: a key of one character, a known action code, and a valid
// argument for it (one of builtInApps; a full path; a delay in digits up to one day; none for pasting).
std::optional<ShortcutCommand> parseCommand(const QString &text);

// The combination "Ctrl+Shift+K" of a stored text, even if the rest is damaged; the text itself if not even
// the modifiers are readable.
QString keyText(const QString &command);
QString keyText(const ShortcutCommand &command);

// Whether both are the same combination for Windows: the order of modifiers and the case of the letter do not
// matter. Damaged texts must be identical.
bool sameKeys(const QString &first, const QString &second);

// "Open Windows 11 App: notepad".
QString actionText(const QString &command);

// An address that a browser can open, with "https://" added if there is no scheme; empty if it is no web page
// or mail address, for example a program.
QString openableAddress(const QString &typed);

} // namespace automation
