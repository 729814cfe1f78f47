// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/PageStack.h"

#include "app/HomeForm.h"
#include "widgets/FLWidget.h"

#include <QScopedValueRollback>
#include <QStackedLayout>

namespace
{

constexpr qsizetype maxHistory = 32;

} // namespace

PageStack::PageStack(const ModuleTable &table, QWidget *window)
    : QObject(window),
      m_table(table),
      m_window(window),
      m_stack(new QStackedLayout),
      m_home(new HomeForm(window, table))
{
    m_stack->addWidget(m_home);
}

// Pages may emit signals while they are destroyed, and must not reach a half-destroyed window.
PageStack::~PageStack()
{
    for (FLWidget *page : std::as_const(m_pages)) {
        page->disconnect(m_window);
        delete page;
    }
}

QWidget *PageStack::pageOf(int number) const
{
    if (number == PageNumbers::home)
        return m_home;
    return m_pages.value(m_numbers.idOf(number));
}

int PageStack::shownNumber() const
{
    for (auto page = m_pages.cbegin(); page != m_pages.cend(); ++page) {
        if (page.value() == m_stack->currentWidget())
            return m_numbers.numberOf(page.key());
    }
    return PageNumbers::home;
}

bool PageStack::mayShow(int number)
{
    const Module *module = m_table.find(m_numbers.idOf(number));
    const bool isPage = number == PageNumbers::home || (module && module->kind == Module::Kind::Page);
    return !isPage || pageOf(number) == m_stack->currentWidget() || mayLeaveShownPage();
}

bool PageStack::mayLeaveShownPage()
{
    auto *page = qobject_cast<FLWidget *>(m_stack->currentWidget());
    if (!page)
        return true;
    if (m_asking)
        return false; // the question is still open
    const QScopedValueRollback asking(m_asking, true);
    return page->mayLeave();
}

// Numbers equal stack indexes only until the first companion gets one; from then on the page is looked up.
void PageStack::show(int number)
{
    const Module *module = m_table.find(m_numbers.idOf(number));
    if (module && module->kind == Module::Kind::Page && !m_pages.contains(module->id))
        makePage(*module);
    QWidget *page = pageOf(number);
    if (!page || page == m_stack->currentWidget())
        return;
    if (!m_goingBack) {
        m_history.append(shownNumber());
        if (m_history.size() > maxHistory)
            m_history.removeFirst();
    }
    m_stack->setCurrentIndex(m_stack->widget(number) == page ? number : m_stack->indexOf(page));
}

void PageStack::makePage(const Module &module)
{
    FLWidget *page = module.create(m_window);
    m_pages.insert(module.id, page);
    m_stack->addWidget(page);
    emit pageMade(module, page);
}

int PageStack::previous() const
{
    return m_history.isEmpty() ? PageNumbers::none : m_history.constLast();
}

// If the visible page refused to be left, keep the history.
void PageStack::endGoingBack()
{
    m_goingBack = false;
    if (shownNumber() == previous())
        m_history.removeLast();
}

void PageStack::tell(ShellEvent event, quint32 value)
{
    for (auto page = m_pages.cbegin(); page != m_pages.cend(); ++page) {
        const Module *module = m_table.find(page.key());
        if (module && module->wants(event))
            page.value()->shellEvent(event, value);
    }
}
