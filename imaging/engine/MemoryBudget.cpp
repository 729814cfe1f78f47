// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/engine/MemoryBudget.h"

namespace imaging
{

void MemoryBudget::Share::take(qint64 bytes)
{
    std::unique_lock lock(m_from.m_mutex);
    m_from.m_freed.wait(lock, [&] { return m_from.m_held == 0 || m_from.m_held + bytes <= m_from.m_budget; });
    m_from.m_held += bytes;
    m_bytes = bytes;
}

MemoryBudget::Share::~Share()
{
    if (m_bytes == 0)
        return;
    {
        const std::lock_guard lock(m_from.m_mutex);
        m_from.m_held -= m_bytes;
    }
    m_from.m_freed.notify_all();
}

} // namespace imaging
