// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/MainWindow.h"

#include "app/CompanionLauncher.h"
#include "app/HomeForm.h"
#include "app/NavigationLock.h"
#include "app/SidePanel.h"
#include "app/ThumbnailRemovalDialog.h"
#include "app/UnavailablePage.h"
#include "widgets/FLWidget.h"

#include <QDebug>
#include <QScopedValueRollback>
#include <QStackedLayout>
#include <QToolButton>

namespace
{

constexpr qsizetype longestHistory = 32;

} // namespace

MainWindow::MainWindow(QWidget *parent, const ModuleTable &table) : QMainWindow(parent), m_table(table)
{
    buildWidgets();
    restoreGeometryValues();
    m_sidePanel->limitWidth();
    buildToolBar();
    m_sidePanel->layOut();
    m_stack = new QStackedLayout;
    makeHome();
    buildLayouts();
    m_sidePanel->miscToolsButton()->hide();
    m_sidePanel->homeButton()->hide();
    m_sidePanel->hide();
    buildShortcuts();
    connectSidePanel();
    startAgentIfIdle();
}

// Pages and dialogs may still have something to say while they are destroyed, and must not find half a
// window.
MainWindow::~MainWindow()
{
    delete m_launcher;
    delete m_thumbnailDialog;
    delete m_lock;
    for (FLWidget *page : std::as_const(m_pages)) {
        page->disconnect(this);
        delete page;
    }
}

int MainWindow::openNumbered(int id)
{
    const int number = m_numbers.allocate(id);
    checkOnly(number);
    return number;
}

void MainWindow::openFromPanel(int id)
{
    if (id != PageNumbers::miscTools && !m_table.find(id))
        return;
    const int number = openNumbered(id);
    // A click on a checked button has unchecked it.
    if (QToolButton *button = m_sidePanel->button(id))
        button->setChecked(true);
    showApp(number);
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
    const QHash<int, QToolButton *> &buttons = m_sidePanel->buttons();
    for (auto each = buttons.cbegin(); each != buttons.cend(); ++each) {
        if (m_numbers.numberOf(each.key()) != number)
            each.value()->setChecked(false);
    }
    if (m_numbers.numberOf(PageNumbers::miscTools) != number)
        m_sidePanel->miscToolsButton()->setChecked(false);
    if (number != PageNumbers::home)
        m_sidePanel->homeButton()->setChecked(false);
}

void MainWindow::showApp(int number)
{
    qDebug() << "showApp: " << number;
    if (number == m_numbers.current())
        return;
    const Module *module = m_table.find(m_numbers.idOf(number));
    const bool toAPage = number == PageNumbers::home || (module && module->kind == Module::Kind::Page);
    if (toAPage && pageOf(number) != m_stack->currentWidget() && !mayLeaveShownPage()) {
        returnToShownPage();
        return;
    }
    m_numbers.setCurrent(number);

    if (module && module->kind == Module::Kind::Launcher) {
        m_launcher->launch(*module); // waits for the user; this window may be gone afterwards
        return;
    }
    if (number == PageNumbers::home)
        makeHome();
    else if (module)
        makePage(*module);
    else
        returnToShownPage(); // the miscellaneous tools have a number and nothing to show
    selectInStack(number);
}

void MainWindow::makeHome()
{
    if (m_home)
        return;
    m_home = new HomeForm(this, m_table);
    connect(m_home, &HomeForm::closeApp, this, &MainWindow::OnCloseApp);
    connect(m_home, &HomeForm::openModule, this, &MainWindow::onOpenModule);
    m_stack->addWidget(m_home);
}

void MainWindow::makePage(const Module &module)
{
    if (m_pages.contains(module.id))
        return;
    FLWidget *page = module.create ? module.create(this) : new UnavailablePage(module, this);
    m_pages.insert(module.id, page);
    connect(page, &FLWidget::closeApp, this, &MainWindow::OnCloseApp);
    if (module.hasLongJobs)
        connect(page, &FLWidget::showToolbarSignal, this, &MainWindow::OnShowToolbarSignal);
    m_stack->addWidget(page);
    if (module.wants(ShellEvent::WindowTitle))
        page->shellEvent(ShellEvent::WindowTitle, 0);
}

// A number names a place in the stack only until the first companion has taken one. From then on the page
// that was asked for is looked up; what has no page leaves the one on the screen where it is.
void MainWindow::selectInStack(int number)
{
    QWidget *page = pageOf(number);
    if (!page || page == m_stack->currentWidget())
        return;
    if (!m_goingBack) {
        m_history.append(shownNumber());
        if (m_history.size() > longestHistory)
            m_history.removeFirst();
    }
    m_stack->setCurrentIndex(m_stack->widget(number) == page ? number : m_stack->indexOf(page));
}

QWidget *MainWindow::pageOf(int number) const
{
    if (number == PageNumbers::home)
        return m_home;
    return m_pages.value(m_numbers.idOf(number));
}

int MainWindow::shownNumber() const
{
    for (auto page = m_pages.cbegin(); page != m_pages.cend(); ++page) {
        if (page.value() == m_stack->currentWidget())
            return m_numbers.numberOf(page.key());
    }
    return PageNumbers::home;
}

bool MainWindow::mayLeaveShownPage()
{
    auto *page = qobject_cast<FLWidget *>(m_stack->currentWidget());
    if (!page)
        return true;
    if (m_askingToLeave)
        return false; // the question is still on the screen
    const QScopedValueRollback asking(m_askingToLeave, true);
    return page->mayLeave();
}

void MainWindow::returnToShownPage()
{
    const int number = shownNumber();
    m_numbers.setCurrent(number);
    checkOnly(number);
    if (QToolButton *button = number == PageNumbers::home ? m_sidePanel->homeButton()
                                                          : m_sidePanel->button(m_numbers.idOf(number)))
        button->setChecked(true);
}

void MainWindow::onLauncherFinished(int id)
{
    // Only when nothing else was opened meanwhile.
    if (m_numbers.current() == m_numbers.numberOf(id))
        returnToShownPage();
}

void MainWindow::goBack()
{
    if (m_history.isEmpty())
        return;
    const QScopedValueRollback goingBack(m_goingBack, true);
    const int target = m_history.constLast();
    showApp(target);
    returnToShownPage();
    if (shownNumber() == target) // the page on the screen may have refused to be left
        m_history.removeLast();
}
