// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ModuleTable.h"
#include "app/PageNumbers.h"

#include <QHash>
#include <QObject>

class FLWidget;
class HomeForm;
class QStackedLayout;

// The pages of the main window: creates each on first use, keeps track of the visible one and of the history,
// and asks a page before it is left. Pages live as long as this object.
class PageStack : public QObject
{
    Q_OBJECT

public:
    // Creates page 0, the home page, at once. `window` is the parent of all pages.
    PageStack(const ModuleTable &table, QWidget *window);
    ~PageStack() override;

    QStackedLayout *layout() const { return m_stack; } // the window takes ownership
    HomeForm *home() const { return m_home; }
    FLWidget *page(int id) const { return m_pages.value(id); } // null until first opened
    PageNumbers &numbers() { return m_numbers; }
    // The number of the visible page.
    int shownNumber() const;

    // Asks the visible page whether the page with that number may replace it.
    bool mayShow(int number);
    bool mayLeaveShownPage();
    // Shows the page with that number, creating it if necessary. If the number has no page, the visible one
    // stays.
    void show(int number);
    // The previous page in the history; PageNumbers::none if there is none.
    int previous() const;
    // Until endGoingBack(), show() goes back and adds nothing to the history.
    void beginGoingBack() { m_goingBack = true; }
    void endGoingBack();

    // Notifies the pages whose modules registered for the event.
    void tell(ShellEvent event, quint32 value = 0);

signals:
    void pageMade(const Module &module, FLWidget *page);

private:
    void makePage(const Module &module);
    QWidget *pageOf(int number) const;

    const ModuleTable &m_table;
    QWidget *m_window;
    QStackedLayout *m_stack;
    HomeForm *m_home;
    QHash<int, FLWidget *> m_pages; // by module id
    PageNumbers m_numbers;
    QList<int> m_history; // numbers of the previous pages
    bool m_goingBack = false;
    bool m_asking = false;
};
