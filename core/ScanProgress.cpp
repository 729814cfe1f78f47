// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ScanProgress.h"

#include <QMutexLocker>

#include <algorithm>

namespace core
{

namespace
{
constexpr int millisecondsBetweenReports = 50;
}

double ScanProgress::fraction() const
{
    if (totalBytes > 0)
        return std::min(1.0, static_cast<double>(bytes) / static_cast<double>(totalBytes));
    return totalSteps > 0 ? std::min(1.0, static_cast<double>(steps) / totalSteps) : -1;
}

ProgressRelay::ProgressRelay(QObject *parent) : QObject(parent), m_timer(this)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(millisecondsBetweenReports);
    connect(&m_timer, &QTimer::timeout, this, &ProgressRelay::passOn);
}

void ProgressRelay::finish()
{
    {
        const QMutexLocker lock(&m_mutex);
        m_running = false;
    }
    m_timer.stop();
    passOn();
}

void ProgressRelay::restart()
{
    const QMutexLocker lock(&m_mutex);
    m_latest = {};
    m_dirty = false;
    m_running = true;
}

ScanProgress ProgressRelay::latest() const
{
    const QMutexLocker lock(&m_mutex);
    return m_latest;
}

void ProgressRelay::setPath(const QString &path)
{
    change([&path](ScanProgress &progress) { progress.path = path; });
}

void ProgressRelay::setTotalSteps(int total)
{
    change([total](ScanProgress &progress) { progress.totalSteps = total; });
}

void ProgressRelay::setSteps(int steps)
{
    change([steps](ScanProgress &progress) { progress.steps = steps; });
}

void ProgressRelay::addStep()
{
    change([](ScanProgress &progress) { ++progress.steps; });
}

void ProgressRelay::setItems(int items)
{
    change([items](ScanProgress &progress) { progress.items = items; });
}

void ProgressRelay::setTotalBytes(quint64 total)
{
    change([total](ScanProgress &progress) { progress.totalBytes = total; });
}

void ProgressRelay::setBytes(quint64 bytes)
{
    change([bytes](ScanProgress &progress) { progress.bytes = bytes; });
}

template <class Change>
void ProgressRelay::change(Change apply)
{
    {
        const QMutexLocker lock(&m_mutex);
        if (!m_running)
            return;
        apply(m_latest);
        m_dirty = true;
        if (m_scheduled)
            return;
        m_scheduled = true;
    }
    // One event per report, however many changes it covers; no timer runs while nothing changes.
    QMetaObject::invokeMethod(
        this, [this] { m_timer.start(); }, Qt::QueuedConnection);
}

void ProgressRelay::passOn()
{
    ScanProgress progress;
    {
        const QMutexLocker lock(&m_mutex);
        m_scheduled = false;
        if (!m_dirty)
            return;
        m_dirty = false;
        progress = m_latest;
    }
    emit changed(progress);
}

} // namespace core
