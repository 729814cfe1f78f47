// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <condition_variable>
#include <mutex>

namespace imaging
{

// Limits the memory that several threads hold at a time. A request above the whole budget is granted when
// nothing else is held, so that it does not wait forever.
class MemoryBudget
{
public:
    explicit MemoryBudget(qint64 bytes) : m_budget(bytes) {}

    // Memory held until this goes out of scope. One share per thread at a time.
    class Share
    {
    public:
        explicit Share(MemoryBudget &budget) : m_from(budget) {}
        ~Share();
        Share(const Share &) = delete;
        Share &operator=(const Share &) = delete;

        // Waits until the memory is available. Call once only.
        void take(qint64 bytes);

    private:
        MemoryBudget &m_from;
        qint64 m_bytes = 0;
    };

private:
    const qint64 m_budget;
    std::mutex m_mutex;
    std::condition_variable m_freed;
    qint64 m_held = 0;
};

} // namespace imaging
