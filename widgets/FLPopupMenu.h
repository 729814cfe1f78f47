// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>

// A context menu: shows its actions' shortcuts and tool tips, is shown with popup() (nothing waits for it)
// and deletes itself when it closes.
class FLPopupMenu : public QMenu
{
    Q_OBJECT

public:
    explicit FLPopupMenu(QWidget *parent = nullptr);

    // Shows `action` in this menu with its shortcut, which context menus leave out by default.
    void addWithShortcut(QAction *action);
};
