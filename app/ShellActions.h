// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QMenu>

class QMainWindow;

// The window's own commands: its toolbar at the left edge, the shortcuts, and the context menu of areas
// without one. The window connects the actions.
struct ShellActions {
    // Adds the tool bar to the window.
    explicit ShellActions(QMainWindow *window);

    // Replaces Qt's own menu, which could hide the toolbar without a way to show it again.
    QMenu *makeMenu(QWidget *parent) const;

    QAction *home;
    QAction *update;
    QAction *about;
    QAction *sidePanel; // checkable
    QAction *back;
    QAction *exit;
};
