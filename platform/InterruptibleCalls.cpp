// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/InterruptibleCalls.h"

#include "platform/Handle.h"

namespace platform
{

namespace
{

// Opened once a thread: a scan makes hundreds of thousands of calls. Null when it cannot be opened; then
// interrupting does nothing.
HANDLE thisThread()
{
    thread_local const ObjectHandle self(OpenThread(THREAD_TERMINATE, FALSE, GetCurrentThreadId()));
    return self.get();
}

} // namespace

InterruptibleCalls::Call::Call(InterruptibleCalls &calls) : m_calls(calls), m_thread(thisThread())
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
    const std::lock_guard lock(m_mutex);
    for (const HANDLE thread : m_threads)
        CancelSynchronousIo(thread);
}

} // namespace platform
