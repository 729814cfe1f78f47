// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FLPopupMenu.h"

FLPopupMenu::FLPopupMenu(QWidget *parent) : QMenu(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setToolTipsVisible(true);
}

void FLPopupMenu::addWithShortcut(QAction *action)
{
    action->setShortcutVisibleInContextMenu(true);
    addAction(action);
}
