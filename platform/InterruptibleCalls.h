// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>
#include <vector>

namespace platform
{

// The calls in which threads wait for a disk or a share, so that another thread can end them. A share that
// went away keeps a thread for a minute.
class InterruptibleCalls
{
public:
    // As long as it lives, its thread is in such a call.
    class Call
    {
    public:
        explicit Call(InterruptibleCalls &calls);
        ~Call();
        Call(const Call &) = delete;
        Call &operator=(const Call &) = delete;

    private:
        InterruptibleCalls &m_calls;
        const unsigned long m_thread; // its id
    };

    // From any thread. What waits fails with ERROR_OPERATION_ABORTED, if the driver beneath can give it up. A
    // call that has not reached the driver yet is missed: repeat it until the threads have ended.
    void interrupt();

private:
    std::mutex m_mutex;
    std::vector<unsigned long> m_threads;
};

} // namespace platform
