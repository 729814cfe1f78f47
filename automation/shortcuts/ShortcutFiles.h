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

// The smart shortcuts on the disk. All functions but shortcutPlaces() touch the disk and may take long; any
// thread.
namespace automation
{

// A folder that holds shortcuts.
struct ShortcutPlace {
    QString title; // "Desktop"
    QString folder;
    bool deep = false; // with the folders in it
};

// The desktop, the Start menu, and the user's own folder where there is one; only what exists for Windows.
QList<ShortcutPlace> shortcutPlaces(const QString &ownFolder);

// A shortcut that starts our starter.
struct SmartShortcut {
    platform::ShownItem item; // the .lnk file
    QString place;            // title
    QString name;
    platform::ShortcutFile file;
    std::optional<PriorityStart> start; // empty when it cannot be read
    bool programIsThere = false;
    bool starterIsThere = false; // and is the one of this installation
    QImage icon;
};

struct ShortcutSearch {
    QList<SmartShortcut> found; // by name
    QStringList unreadable;     // folders
};

// `starter`: the whole path of LarkspurStart.exe of this installation.
ShortcutSearch findSmartShortcuts(const QList<ShortcutPlace> &places, const QString &starter,
                                  const core::CancelFlag &cancel);

// What the user wants of a shortcut.
struct ShortcutWish {
    QString name; // of the file, without ".lnk"
    PriorityStart start;
    QString workingFolder; // empty: the program's own
    QString description;
    platform::ShortcutFile::Window window = platform::ShortcutFile::Window::Normal;
};

// Both answer with what went wrong, in words for the user; empty when nothing did. No other file is replaced.
QString makeShortcut(const QString &folder, const ShortcutWish &wish, const QString &starter);
// Nothing happens when the file is not the one any more that was listed.
QString changeShortcut(const SmartShortcut &shortcut, const ShortcutWish &wish, const QString &starter);

// What a program, or the program that a shortcut names, proposes for a new shortcut; an empty program for
// what no priority can be given to.
ShortcutWish wishFor(const QString &path);

} // namespace automation
