// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QMenu;

// Opens what is selected in a list, through platform::shell(). Interface thread.
struct OpenedSeveral {
    QString notice; // in words for the user; empty when all went well
    bool failed = false;
};

// At most so many files are opened, or folders shown, by one click.
inline constexpr qsizetype maxOpenedAtOnce = 10;

// In a menu: to open, and to show in Explorer, the first file of each of the selected groups.
void addOpenFirsts(QMenu *menu, const QStringList &firsts, std::function<void(const OpenedSeveral &)> tell);

// Of several, no programs: they are not to run by one key that names none of them.
OpenedSeveral openFiles(const QStringList &paths);
// A window for each folder, with the first of its files selected.
OpenedSeveral revealFiles(const QStringList &paths);
