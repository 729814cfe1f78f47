// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>

// A context menu that shows the shortcuts and tool tips of its actions. It is shown non-modally with popup(),
// and deletes itself when closed.
class FLPopupMenu : public QMenu
{
    Q_OBJECT

public:
    explicit FLPopupMenu(QWidget *parent = nullptr);

    // Shows `action` in this menu with its shortcut, which context menus leave out by default.
    void addWithShortcut(QAction *action);
};
