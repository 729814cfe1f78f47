// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/MainWindow.h"

#include "app/AboutDialog.h"
#include "app/CompanionLauncher.h"
#include "app/HomeForm.h"
#include "app/ModuleCard.h"
#include "app/NamedSlots.h"
#include "app/PageStack.h"
#include "app/ShellActions.h"
#include "app/SidePanel.h"
#include "app/ThumbnailRemovalDialog.h"
#include "app/UpdateDialog.h"
#include "app/WindowPlacement.h"
#include "widgets/FLWidget.h"

#include <QApplication>
#include <QDebug>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QStackedLayout>
#include <QStatusBar>
#include <QToolButton>

MainWindow::MainWindow(QWidget *parent, const ModuleTable &table) : QMainWindow(parent), m_table(table)
{
    buildWidgets();
    placement::restore(*this);
    m_sidePanel->limitWidth();
    m_actions = std::make_unique<ShellActions>(this);
    m_sidePanel->layOut();
    m_pages = new PageStack(m_table, this);
    connect(m_pages, &PageStack::pageMade, this, &MainWindow::connectPage);
    connect(m_pages->home(), &HomeForm::closeApp, this, &MainWindow::OnCloseApp);
    connect(m_pages->home(), &HomeForm::openModule, this, &MainWindow::onOpenModule);
    connect(&m_jobs, &RunningJobs::changed, this, &MainWindow::showJob);
    buildLayouts();
    m_sidePanel->miscToolsButton()->hide();
    m_sidePanel->homeButton()->hide();
    m_sidePanel->hide();
    connectActions();
    connectSidePanel();
    startAgentIfIdle();
}

MainWindow::~MainWindow()
{
    delete m_launcher;
    delete m_thumbnailDialog;
    delete m_pages;
}

void MainWindow::buildWidgets()
{
    auto *central = new QWidget(this);
    central->setObjectName(QStringLiteral("centralwidget"));
    setCentralWidget(central);
    menuBar()->setObjectName(QStringLiteral("menubar"));
    // Takes up room only while it shows a message.
    QStatusBar *status = statusBar();
    status->setSizeGripEnabled(false);
    status->hide();
    connect(status, &QStatusBar::messageChanged, status,
            [status](const QString &text) { status->setHidden(text.isEmpty()); });
    m_sidePanel = new SidePanel(m_table, central);
    m_launcher = new CompanionLauncher(this);
    connect(m_launcher, &CompanionLauncher::finished, this, &MainWindow::onLauncherFinished);
}

void MainWindow::buildLayouts()
{
    auto *layout = new QHBoxLayout(centralWidget());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_sidePanel);
    layout->addLayout(m_pages->layout(), 1);
}

void MainWindow::connectActions()
{
    connect(m_actions->home, &QAction::triggered, this, &MainWindow::on_HomeButton_clicked);
    connect(m_actions->update, &QAction::triggered, this, &MainWindow::OnUpdate);
    connect(m_actions->about, &QAction::triggered, this, &MainWindow::OnAbout);
    connect(m_actions->sidePanel, &QAction::toggled, m_sidePanel, &QWidget::setVisible);
    connect(m_actions->back, &QAction::triggered, this, &MainWindow::goBack);
    connect(m_actions->exit, &QAction::triggered, this, &MainWindow::OnExitApp);
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

int MainWindow::openNumbered(int id)
{
    const int number = m_pages->numbers().allocate(id);
    checkOnly(number);
    return number;
}

void MainWindow::openFromPanel(int id)
{
    if (!m_table.find(id))
        return;
    const int number = openNumbered(id);
    // A click on a checked button has unchecked it.
    if (QToolButton *button = m_sidePanel->button(id))
        button->setChecked(true);
    showApp(number);
}

void MainWindow::openMiscTools()
{
    showApp(openNumbered(PageNumbers::miscTools));
}

void MainWindow::on_HomeButton_clicked()
{
    checkOnly(PageNumbers::home);
    m_sidePanel->homeButton()->setChecked(true);
    showApp(PageNumbers::home);
}

void MainWindow::onOpenModule(int index)
{
    const Module *module = m_table.find(index);
    if (!module)
        return;
    const int number = openNumbered(index);
    if (module->homeLog)
        qDebug() << module->homeLog;
    if (module->hasButton() && module->kind == Module::Kind::Page)
        m_sidePanel->button(index)->setChecked(true);
    showApp(number);
}

void MainWindow::checkOnly(int number)
{
    const PageNumbers &numbers = m_pages->numbers();
    const QHash<int, QToolButton *> &buttons = m_sidePanel->buttons();
    for (auto each = buttons.cbegin(); each != buttons.cend(); ++each) {
        if (numbers.numberOf(each.key()) != number)
            each.value()->setChecked(false);
    }
    if (numbers.numberOf(PageNumbers::miscTools) != number)
        m_sidePanel->miscToolsButton()->setChecked(false);
    if (number != PageNumbers::home)
        m_sidePanel->homeButton()->setChecked(false);
}

void MainWindow::showApp(int number)
{
    qDebug() << "showApp: " << number;
    PageNumbers &numbers = m_pages->numbers();
    if (number == numbers.current())
        return;
    if (!m_pages->mayShow(number)) {
        returnToShownPage();
        return;
    }
    numbers.setCurrent(number);

    const Module *module = m_table.find(numbers.idOf(number));
    if (module && module->kind == Module::Kind::Launcher) {
        m_launcher->launch(*module); // waits for the user; this window may have been destroyed afterwards
        return;
    }
    if (!module && number != PageNumbers::home)
        returnToShownPage(); // the miscellaneous tools have a number but no page
    m_pages->show(number);
    if (module)
        m_jobs.lookedAt(module->id);
}

void MainWindow::connectPage(const Module &module, FLWidget *page)
{
    connect(page, &FLWidget::closeApp, this, &MainWindow::OnCloseApp);
    connect(page, &FLWidget::showToolbarSignal, this, &MainWindow::OnShowToolbarSignal);
    if (module.wants(ShellEvent::WindowTitle))
        page->shellEvent(ShellEvent::WindowTitle, 0);
}

void MainWindow::returnToShownPage()
{
    const int number = m_pages->shownNumber();
    m_pages->numbers().setCurrent(number);
    checkOnly(number);
    if (QToolButton *button = number == PageNumbers::home
                                  ? m_sidePanel->homeButton()
                                  : m_sidePanel->button(m_pages->numbers().idOf(number)))
        button->setChecked(true);
}

void MainWindow::onLauncherFinished(int id)
{
    // Unless something else was opened meanwhile.
    if (m_pages->numbers().current() == m_pages->numbers().numberOf(id))
        returnToShownPage();
}

void MainWindow::goBack()
{
    const int target = m_pages->previous();
    if (target == PageNumbers::none)
        return;
    m_pages->beginGoingBack();
    showApp(target);
    returnToShownPage();
    m_pages->endGoingBack();
}

void MainWindow::OnShowToolbarSignal(bool show)
{
    for (const Module &module : m_table.rows())
        if (sender() && m_pages->page(module.id) == sender())
            m_jobs.setRunning(module.id, !show,
                              m_pages->shownNumber() == m_pages->numbers().numberOf(module.id));
}

void MainWindow::showJob(int id, RunningJobs::State state)
{
    m_sidePanel->showJob(id, state);
    if (ModuleCard *card = m_pages->home()->card(id))
        card->showJob(state);
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
