// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The content of shortcut files (.lnk), read and written by the shell's own link object. Nothing that a
// shortcut names is looked for or resolved. Any thread.
namespace platform
{

struct ShortcutFile {
    enum class Window { Normal, Minimized, Maximized };

    QString target; // a file; empty for what is none, such as a Store app
    QString arguments;
    QString workingFolder;
    QString description;
    QString iconPath;
    int iconIndex = 0;
    Window window = Window::Normal;

    bool operator==(const ShortcutFile &) const = default;
};

// Empty for bytes that are no shortcut.
std::optional<ShortcutFile> readShortcut(const QByteArray &bytes);

// Empty when Windows cannot make such a shortcut. What `earlier`, the shortcut that is changed, holds besides
// (its key combination, say) is kept.
QByteArray shortcutBytes(const ShortcutFile &file, const QByteArray &earlier = {});

} // namespace platform
