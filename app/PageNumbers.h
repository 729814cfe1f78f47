// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>

// The numbers that the main window uses for its pages. Whatever is opened for the first time gets the next
// number and keeps it: pages, but also companions and the miscellaneous tools, which have no page. So a
// number is not an index into the page stack; the window's bookkeeping and its log deliberately use these
// numbers.
class PageNumbers
{
public:
    static constexpr int none = -1;
    static constexpr int home = 0; // number of the home page

    // Stands for the miscellaneous tools where an id is expected.
    static constexpr int miscTools = -2;

    // The number of a module; allocates one if necessary.
    int allocate(int id);
    // The same without allocating; `none` if it was never opened.
    int numberOf(int id) const { return m_numbers.value(id, none); }
    // The id for a number; `none` for home and unused numbers.
    int idOf(int number) const { return m_numbers.key(number, none); }

    // The number opened last.
    int current() const { return m_current; }
    void setCurrent(int number) { m_current = number; }

private:
    QHash<int, int> m_numbers; // by id
    int m_counter = home;
    int m_current = home;
};
