// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/PageNumbers.h"

int PageNumbers::allocate(int id)
{
    const auto found = m_numbers.constFind(id);
    if (found != m_numbers.constEnd())
        return *found;
    return *m_numbers.insert(id, ++m_counter);
}
