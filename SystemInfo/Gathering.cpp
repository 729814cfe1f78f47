// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/Gathering.h"

#include <QMutex>
#include <QWaitCondition>

#include <exception>

namespace systeminfo
{

namespace
{

using Clock = std::chrono::steady_clock;

// Poll interval: setting the cancel flag does not wake a waiting thread.
constexpr std::chrono::milliseconds pause{20};

} // namespace

struct Gathering::Shared {
    explicit Shared(PageId id) : latest(emptyPage(id)) {}

    QMutex mutex;
    QWaitCondition changed;
    Page latest;
    bool done = false;
    core::CancelFlag cancel;

    void take(Page page, bool last)
    {
        const QMutexLocker lock(&mutex);
        latest = std::move(page);
        done = done || last;
        changed.wakeAll();
    }

    void fail()
    {
        const QMutexLocker lock(&mutex);
        latest.notices << Words::tr("The page could not be gathered to its end.");
        done = true;
        changed.wakeAll();
    }

    void gather(PageId id, const MachineFactory &factory)
    {
        try {
            const std::unique_ptr<Machine> machine = factory(cancel);
            Page page = pageSource(id).gather(*machine, [this](const Page &state) { take(state, false); });
            take(std::move(page), true);
        } catch (const std::exception &) {
            fail();
        }
    }
};

Gathering::Gathering(PageId id, const MachineFactory &factory)
    : m_shared(std::make_shared<Shared>(id)),
      m_gather([shared = m_shared, id, factory] { shared->gather(id, factory); })
{
    start();
}

void Gathering::start()
{
    try {
        if (m_gather && m_task.start(m_gather))
            m_gather = {};
    } catch (const std::exception &) {
        m_gather = {};
        m_shared->fail(); // there is no thread left
    }
}

Gathering::Gathering(Gathering &&) noexcept = default;

Gathering::~Gathering()
{
    if (m_shared)
        m_shared->cancel.set();
}

Page Gathering::wait(const core::CancelFlag &cancel, std::chrono::milliseconds limit)
{
    const auto end = Clock::now() + limit;
    QMutexLocker lock(&m_shared->mutex);
    while (!m_shared->done && !cancel.isSet() && Clock::now() < end) {
        m_shared->changed.wait(&m_shared->mutex, static_cast<unsigned long>(pause.count()));
        lock.unlock();
        start();
        lock.relock();
    }
    Page page = m_shared->latest;
    if (!m_shared->done && !cancel.isSet())
        page.notices << Words::tr(
            "Windows did not answer in time. What is missing here may come with Refresh.");
    return page;
}

} // namespace systeminfo
