// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/PriorityStart.h"
#include "core/CancelFlag.h"
#include "platform/Guard.h"
#include "platform/ShortcutFile.h"

#include <QImage>
#include <QList>
#include <QStringList>

#include <optional>

// Reads and writes smart shortcuts. All functions except shortcutPlaces() do disk I/O and may be slow; any
// thread.
namespace automation
{

// A folder that holds shortcuts.
struct ShortcutPlace {
    QString title; // "Desktop"
    QString folder;
    bool deep = false; // including subfolders
};

// The desktop, the Start menu and the user's own folder if there is one; without folders that are unknown to
// Windows.
QList<ShortcutPlace> shortcutPlaces(const QString &ownFolder);

// A shortcut that starts LarkspurStart.exe.
struct SmartShortcut {
    platform::ShownItem item; // the .lnk file
    QString place;            // title
    QString name;
    platform::ShortcutFile file;
    std::optional<PriorityStart> start; // nullopt if its arguments are not valid
    bool programIsThere = false;
    bool starterIsThere = false; // and belongs to this installation
    QImage icon;
};

struct ShortcutSearch {
    QList<SmartShortcut> found; // sorted by name
    QStringList unreadable;     // folders
};

// `starter`: full path of this installation's LarkspurStart.exe.
ShortcutSearch findSmartShortcuts(const QList<ShortcutPlace> &places, const QString &starter,
                                  const core::CancelFlag &cancel);

// The user's input for a shortcut.
struct ShortcutWish {
    QString name; // file name without ".lnk"
    PriorityStart start;
    QString workingFolder; // empty for the program's own folder
    QString description;
    platform::ShortcutFile::Window window = platform::ShortcutFile::Window::Normal;
};

// Both return an error text for the user, empty on success. Other files are never replaced.
QString makeShortcut(const QString &folder, const ShortcutWish &wish, const QString &starter);
// Fails if the file has changed since it was listed.
QString changeShortcut(const SmartShortcut &shortcut, const ShortcutWish &wish, const QString &starter);

// Suggested values for a new shortcut to a program or to the target of a shortcut; the program is empty if it
// cannot be started with a priority.
ShortcutWish wishFor(const QString &path);

} // namespace automation
