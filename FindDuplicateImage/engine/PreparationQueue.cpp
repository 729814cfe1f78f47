// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/PreparationQueue.h"

#include <system_error>
#include <utility>

namespace lookalikes
{

PreparationQueue::PreparationQueue(int threads, Prepare prepare) : m_prepare(std::move(prepare))
{
    try {
        for (int i = 0; i < threads; ++i)
            m_threads.emplace_back([this] { work(); });
    } catch (const std::system_error &) {
        // Fewer threads than requested: those that started, or the caller's own, do the work.
    }
}

PreparationQueue::~PreparationQueue()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_toDo.notify_all();
    for (std::thread &thread : m_threads)
        thread.join();
}

bool PreparationQueue::isFull() const
{
    return !m_files.empty() && m_files.size() >= m_threads.size() * filesPerThread;
}

bool PreparationQueue::firstIsReady() const
{
    const std::lock_guard lock(m_mutex);
    return !m_files.empty() && m_files.front().prepared;
}

void PreparationQueue::add(duplicates::FileRecord file)
{
    if (m_threads.empty()) {
        m_files.push_back({{}, m_prepare(std::move(file))});
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_files.push_back({std::move(file), std::nullopt});
    }
    m_toDo.notify_one();
}

PreparedImage PreparationQueue::takeFirst()
{
    std::unique_lock lock(m_mutex);
    m_ready.wait(lock, [this] { return m_files.front().prepared.has_value(); });
    PreparedImage first = std::move(*m_files.front().prepared);
    m_files.pop_front();
    if (m_begun > 0)
        --m_begun;
    return first;
}

void PreparationQueue::work()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_toDo.wait(lock, [this] { return m_stop || m_begun < m_files.size(); });
        if (m_stop)
            return;
        File &file = m_files[m_begun++];
        lock.unlock();
        PreparedImage prepared = m_prepare(std::move(file.record));
        lock.lock();
        file.prepared = std::move(prepared);
        m_ready.notify_one();
    }
}

} // namespace lookalikes
