// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ModuleTable.h"
#include "app/PageNumbers.h"

#include <QHash>
#include <QObject>

class FLWidget;
class HomeForm;
class QStackedLayout;

// The pages of the main window: makes each when it is first asked for, keeps which one is on the screen and
// which were there before, and asks a page before it is left. Pages live as long as this object.
class PageStack : public QObject
{
    Q_OBJECT

public:
    // Page 0, the home page, is made at once. `window` is the parent of all pages.
    PageStack(const ModuleTable &table, QWidget *window);
    ~PageStack() override;

    QStackedLayout *layout() const { return m_stack; } // for the window, which takes it
    HomeForm *home() const { return m_home; }
    FLWidget *page(int id) const { return m_pages.value(id); } // null until first opened
    PageNumbers &numbers() { return m_numbers; }
    // The number of the page that stands on the screen.
    int shownNumber() const;

    // Whether the page of that number may take the place of the one on the screen, which is asked.
    bool mayShow(int number);
    bool mayLeaveShownPage();
    // Puts the page of that number on the screen; makes it when it is a module's that has none yet. What has
    // no page leaves the one on the screen where it is.
    void show(int number);
    // Where the way back leads to; PageNumbers::none at its end.
    int previous() const;
    // show() until endGoingBack() is the way back and not remembered.
    void beginGoingBack() { m_goingBack = true; }
    void endGoingBack();

    // To the pages whose modules want it.
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
    QList<int> m_history; // numbers of the pages shown before, for going back
    bool m_goingBack = false;
    bool m_asking = false;
};
