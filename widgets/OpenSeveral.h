// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QMenu;

// Opens the selected items of a list through platform::shell(). Interface thread.
struct OpenedSeveral {
    QString notice; // a text for the user; empty on success
    bool failed = false;
};

// Limit for files opened, or folders shown, by one click.
inline constexpr qsizetype maxOpenedAtOnce = 10;

// Adds actions to open, and to show in Explorer, the first file of each selected group.
void addOpenFirsts(QMenu *menu, const QStringList &firsts, std::function<void(const OpenedSeveral &)> tell);

// With several files, programs are skipped: they should not be run by a command that does not name them.
OpenedSeveral openFiles(const QStringList &paths);
// Opens one window per folder, with the first of its files selected.
OpenedSeveral revealFiles(const QStringList &paths);
