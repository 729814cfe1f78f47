// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The content of shortcut files (.lnk), read and written through the shell's link object. Targets are not
// resolved or searched for. Any thread.
namespace platform
{

struct ShortcutFile {
    enum class Window { Normal, Minimized, Maximized };

    QString target; // a file; empty for other targets, such as a Store app
    QString arguments;
    QString workingFolder;
    QString description;
    QString iconPath;
    int iconIndex = 0;
    Window window = Window::Normal;

    bool operator==(const ShortcutFile &) const = default;
};

// nullopt for bytes that are not a shortcut.
std::optional<ShortcutFile> readShortcut(const QByteArray &bytes);

// Empty if Windows cannot create the shortcut. Other properties of `earlier`, the shortcut being changed
// (such as its hot key), are kept.
QByteArray shortcutBytes(const ShortcutFile &file, const QByteArray &earlier = {});

} // namespace platform
