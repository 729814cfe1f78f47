// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ShellActions.h"

#include "app/ToolStrip.h"
#include "widgets/Controls.h"

#include <QMainWindow>

namespace
{

constexpr QSize toolIconSize(24, 24);

} // namespace

ShellActions::ShellActions(QMainWindow *window)
    : sidePanel(new QAction(QMainWindow::tr("Side panel"), window)),
      back(new QAction(QMainWindow::tr("Back"), window)),
      exit(new QAction(QMainWindow::tr("Exit"), window))
{
    auto *bar = new ToolStrip(QMainWindow::tr("Tabs toolbar"), window);
    bar->setObjectName(QStringLiteral("toolbar"));
    bar->setMovable(false);
    bar->setIconSize(toolIconSize);
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    window->addToolBar(Qt::LeftToolBarArea, bar);
    home = bar->addAction(controls::image("Home"), QMainWindow::tr("Home"));
    home->setShortcut(Qt::ALT | Qt::Key_Home);
    bar->addSeparator();
    update = bar->addAction(controls::image("Update24"), QMainWindow::tr("Check Update"));
    bar->addSeparator();
    about = bar->addAction(controls::image("About24"), QMainWindow::tr("About"));
    about->setShortcut(QKeySequence::HelpContents);
    // By default Qt makes toolbar buttons not focusable.
    for (QAction *action : {home, update, about})
        bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);

    sidePanel->setObjectName(QStringLiteral("sidePanelAction"));
    sidePanel->setCheckable(true);
    sidePanel->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_B), QKeySequence(Qt::Key_F9)});
    // Not a shortcut of the window: pages use the same keys for going back internally, and ambiguous
    // shortcuts trigger neither. MainWindow::eventFilter() handles the keys that no page used.
    back->setShortcut(Qt::ALT | Qt::Key_Left);
    exit->setShortcut(Qt::CTRL | Qt::Key_Q); // QKeySequence::Quit is empty on Windows
    window->addActions({sidePanel, exit});
}

QMenu *ShellActions::makeMenu(QWidget *parent) const
{
    auto *menu = new QMenu(parent);
    menu->addActions({home, back});
    menu->addSeparator();
    menu->addAction(sidePanel);
    menu->addSeparator();
    menu->addActions({update, about});
    menu->addSeparator();
    menu->addAction(exit);
    return menu;
}
