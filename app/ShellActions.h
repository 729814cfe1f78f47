// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QMenu>

class QMainWindow;

// What the window offers outside its pages: its tool bar at the left edge, the keys, and the menu of every
// place that has none of its own. The window connects the actions.
struct ShellActions {
    // Adds the tool bar to the window.
    explicit ShellActions(QMainWindow *window);

    // Qt's own menu would offer to hide the tool bar, and nothing to bring it back.
    QMenu *makeMenu(QWidget *parent) const;

    QAction *home;
    QAction *update;
    QAction *about;
    QAction *sidePanel; // can be checked
    QAction *back;
    QAction *exit;
};
