// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>
#include <vector>

namespace platform
{

// Registers calls that wait for a disk or share, so that another thread can cancel them. A lost share blocks
// a thread for a minute.
class InterruptibleCalls
{
public:
    // Marks its thread as being in such a call while it lives.
    class Call
    {
    public:
        explicit Call(InterruptibleCalls &calls);
        ~Call();
        Call(const Call &) = delete;
        Call &operator=(const Call &) = delete;

    private:
        InterruptibleCalls &m_calls;
        const unsigned long m_thread; // thread id
    };

    // Any thread. Pending calls fail with ERROR_OPERATION_ABORTED if the driver supports cancelling. A call
    // that has not reached the driver yet is missed: repeat until the threads have finished.
    void interrupt();

private:
    std::mutex m_mutex;
    std::vector<unsigned long> m_threads;
};

} // namespace platform
