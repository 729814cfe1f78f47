// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/FakeFileProbe.h"

#include "core/WorkerThread.h"

#include <QMutexLocker>

#include <new>

namespace tests
{

FakeFileProbe::FakeFileProbe() : m_real(platform::fileProbe())
{
    platform::setFileProbe(this);
}

FakeFileProbe::~FakeFileProbe()
{
    core::waitForRetiredWorkers();
    platform::setFileProbe(nullptr);
}

void FakeFileProbe::setAttributes(const QString &path, quint32 attributes)
{
    const QMutexLocker lock(&m_mutex);
    m_attributes.insert(path, attributes);
}

FakeFileProbe::Hold FakeFileProbe::hold(const QString &path)
{
    auto gate = std::make_shared<QSemaphore>();
    const QMutexLocker lock(&m_mutex);
    m_holds.insert(path, gate);
    return Hold(nullptr, [gate](void *) { gate->release(); });
}

void FakeFileProbe::failAt(const QString &path)
{
    const QMutexLocker lock(&m_mutex);
    m_failing.insert(path);
}

QStringList FakeFileProbe::opened() const
{
    const QMutexLocker lock(&m_mutex);
    return m_opened;
}

void FakeFileProbe::arrive(const QString &path)
{
    std::shared_ptr<QSemaphore> gate;
    {
        const QMutexLocker lock(&m_mutex);
        if (m_failing.contains(path))
            throw std::bad_alloc();
        gate = m_holds.take(path);
    }
    if (!gate)
        return;
    m_held.release();
    gate->acquire();
}

std::optional<quint32> FakeFileProbe::listedAttributes(const QString &path)
{
    arrive(path);
    {
        const QMutexLocker lock(&m_mutex);
        const auto set = m_attributes.constFind(path);
        if (set != m_attributes.cend())
            return *set;
    }
    return m_real.listedAttributes(path);
}

std::optional<core::FileFacts> FakeFileProbe::facts(const QString &path)
{
    arrive(path);
    {
        const QMutexLocker lock(&m_mutex);
        m_opened.append(path);
    }
    return m_real.facts(path);
}

bool FakeFileProbe::isInside(const QString &root, const QString &item)
{
    arrive(item);
    {
        const QMutexLocker lock(&m_mutex);
        m_opened.append(item);
    }
    return m_real.isInside(root, item);
}

} // namespace tests
