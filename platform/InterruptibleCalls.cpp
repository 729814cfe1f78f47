// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/InterruptibleCalls.h"

#include "platform/Handle.h"

namespace platform
{

InterruptibleCalls::Call::Call(InterruptibleCalls &calls) : m_calls(calls), m_thread(GetCurrentThreadId())
{
    const std::lock_guard lock(m_calls.m_mutex);
    m_calls.m_threads.push_back(m_thread);
}

InterruptibleCalls::Call::~Call()
{
    const std::lock_guard lock(m_calls.m_mutex);
    std::erase(m_calls.m_threads, m_thread);
}

void InterruptibleCalls::interrupt()
{
    // While the lock is held no thread leaves its call, so each id still belongs to its thread.
    const std::lock_guard lock(m_mutex);
    for (const unsigned long id : m_threads) {
        const ObjectHandle thread(OpenThread(THREAD_TERMINATE, FALSE, id));
        if (thread)
            CancelSynchronousIo(thread.get());
    }
}

} // namespace platform
