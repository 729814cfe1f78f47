// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>

// The numbers by which the main window calls its pages. Whatever is opened for the first time takes the next
// one and keeps it: pages, but also the companions that are executables of their own and the miscellaneous
// tools, which have no page at all. So a number is not a place in the page stack; the main window's own
// bookkeeping and its log go by these numbers, deliberately.
class PageNumbers
{
public:
    static constexpr int none = -1;
    static constexpr int home = 0; // the number of the home page

    // Names what has a number: a module's id, or this.
    static constexpr int miscTools = -2;

    // The number of a module, given to it now if it has none yet.
    int allocate(int id);
    // The same without giving one; `none` for what was never opened.
    int numberOf(int id) const { return m_numbers.value(id, none); }
    // What bears the number; `none` for home and for numbers not given.
    int idOf(int number) const { return m_numbers.key(number, none); }

    // The number opened last.
    int current() const { return m_current; }
    void setCurrent(int number) { m_current = number; }

private:
    QHash<int, int> m_numbers; // by id
    int m_counter = home;
    int m_current = home;
};
