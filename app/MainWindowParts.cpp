// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of the main window around the pages: tool bar, side panel, shortcuts, dialogs.
#include "app/AboutDialog.h"
#include "app/CompanionLauncher.h"
#include "app/MainWindow.h"
#include "app/NamedSlots.h"
#include "app/PageStack.h"
#include "app/SidePanel.h"
#include "app/ToolStrip.h"
#include "app/UpdateDialog.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QStackedLayout>
#include <QStatusBar>
#include <QToolButton>

namespace
{

constexpr QSize toolIconSize(24, 24);

QIcon image(QLatin1StringView name)
{
    return QIcon(QLatin1StringView(":/resources/images/") + name);
}

} // namespace

void MainWindow::buildWidgets()
{
    auto *central = new QWidget(this);
    central->setObjectName(QStringLiteral("centralwidget"));
    setCentralWidget(central);
    menuBar()->setObjectName(QStringLiteral("menubar"));
    // Takes room only while it says something.
    QStatusBar *status = statusBar();
    status->setSizeGripEnabled(false);
    status->hide();
    connect(status, &QStatusBar::messageChanged, status,
            [status](const QString &text) { status->setHidden(text.isEmpty()); });
    m_sidePanel = new SidePanel(m_table, central);
    m_launcher = new CompanionLauncher(this);
    connect(m_launcher, &CompanionLauncher::finished, this, &MainWindow::onLauncherFinished);
}

void MainWindow::buildToolBar()
{
    m_toolBar = new ToolStrip(tr("Tabs toolbar"), this);
    m_toolBar->setObjectName(QStringLiteral("toolbar"));
    m_toolBar->setMovable(false);
    m_toolBar->setIconSize(toolIconSize);
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    addToolBar(Qt::LeftToolBarArea, m_toolBar);

    m_homeAction = m_toolBar->addAction(image(QLatin1StringView("Home.png")), tr("Home"));
    m_homeAction->setShortcut(Qt::ALT | Qt::Key_Home);
    connect(m_homeAction, &QAction::triggered, this, &MainWindow::on_HomeButton_clicked);
    m_toolBar->addSeparator();
    m_updateAction = m_toolBar->addAction(image(QLatin1StringView("Update24.png")), tr("Check Update"));
    connect(m_updateAction, &QAction::triggered, this, &MainWindow::OnUpdate);
    m_toolBar->addSeparator();
    m_aboutAction = m_toolBar->addAction(image(QLatin1StringView("About24.png")), tr("About"));
    m_aboutAction->setShortcut(QKeySequence::HelpContents);
    connect(m_aboutAction, &QAction::triggered, this, &MainWindow::OnAbout);
    // Qt makes a tool bar's buttons for the mouse alone.
    for (QAction *action : {m_homeAction, m_updateAction, m_aboutAction})
        m_toolBar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
}

void MainWindow::buildLayouts()
{
    auto *layout = new QHBoxLayout(centralWidget());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_sidePanel);
    layout->addLayout(m_pages->layout(), 1);
}

void MainWindow::buildShortcuts()
{
    m_sidePanelAction = new QAction(tr("Side panel"), this);
    m_sidePanelAction->setObjectName(QStringLiteral("sidePanelAction"));
    m_sidePanelAction->setCheckable(true);
    m_sidePanelAction->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_B), QKeySequence(Qt::Key_F9)});
    connect(m_sidePanelAction, &QAction::toggled, m_sidePanel, &QWidget::setVisible);
    m_backAction = new QAction(tr("Back"), this);
    // Not a shortcut of the window: pages go back inside themselves by the same keys, and of two shortcuts
    // with one key Qt triggers neither. eventFilter() takes the keys that no page wanted.
    m_backAction->setShortcut(Qt::ALT | Qt::Key_Left);
    connect(m_backAction, &QAction::triggered, this, &MainWindow::goBack);
    m_exitAction = new QAction(tr("Exit"), this);
    m_exitAction->setShortcut(Qt::CTRL | Qt::Key_Q); // QKeySequence::Quit names no key on Windows
    connect(m_exitAction, &QAction::triggered, this, &MainWindow::OnExitApp);
    addActions({m_sidePanelAction, m_exitAction});
}

void MainWindow::connectSidePanel()
{
    connect(m_sidePanel->homeButton(), &QToolButton::clicked, this, &MainWindow::on_HomeButton_clicked);
    connect(m_sidePanel->miscToolsButton(), &QToolButton::clicked, this,
            &MainWindow::on_miscToolsButton_clicked);
    const QHash<int, QToolButton *> &buttons = m_sidePanel->buttons();
    for (auto each = buttons.cbegin(); each != buttons.cend(); ++each)
        connectNamed(each.value(), this, [this, id = each.key()] { openFromPanel(id); });
}

// The menu of the tool bar and of every place that has none of its own. Qt's would offer to hide the tool
// bar, and nothing to bring it back.
QMenu *MainWindow::createPopupMenu()
{
    auto *menu = new QMenu(this);
    menu->addAction(m_homeAction);
    menu->addAction(m_backAction);
    menu->addSeparator();
    menu->addAction(m_sidePanelAction);
    menu->addSeparator();
    menu->addActions({m_updateAction, m_aboutAction});
    menu->addSeparator();
    menu->addAction(m_exitAction);
    return menu;
}

void MainWindow::OnAbout(bool)
{
    (new AboutDialog(this))->open();
}

void MainWindow::OnUpdate(bool)
{
    (new UpdateDialog(this))->open();
}

void MainWindow::OnExitApp()
{
    QApplication::quit();
}
