// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/WorkerThread.h"

#include <QCoreApplication>
#include <QList>
#include <QTimer>

#include <new>
#include <stdexcept>
#include <utility>

namespace core
{

namespace
{

constexpr int interruptInterval = 100; // ms

// Interface thread.
QList<WorkerThread *> &retiredWorkers()
{
    static QList<WorkerThread *> workers;
    return workers;
}

} // namespace

void WorkerThread::start()
{
    QThread::start();
    if (isRunning() || m_begun)
        return;
    fail(tr("The system has no thread left."));
    deliver([this] { emit done(); });
}

void WorkerThread::requestStop()
{
    if (stopRequested())
        return;
    m_cancel.set();
    QMetaObject::invokeMethod(this, &WorkerThread::insist, Qt::QueuedConnection);
}

void WorkerThread::run()
{
    m_begun = true;
    if (m_priority != InheritPriority)
        setPriority(m_priority);
    try {
        work();
    } catch (const std::bad_alloc &) {
        fail(tr("There is not enough memory."));
    } catch (const std::length_error &) { // thrown by a container whose size would exceed its maximum
        fail(tr("There is not enough memory."));
    } catch (const std::exception &error) {
        fail(QString::fromLocal8Bit(error.what()));
    }
    deliver([this] { emit done(); });
}

void WorkerThread::fail(const QString &error)
{
    m_error = error;
    abandon();
}

void WorkerThread::insist()
{
    if (!isRunning())
        return;
    interrupt();
    QTimer::singleShot(interruptInterval, this, &WorkerThread::insist);
}

void WorkerThread::deliver(std::function<void()> emission)
{
    // Posted to this object rather than to a receiver: deleting the worker removes the event too, which a
    // queued connection to a form would not do.
    QMetaObject::invokeMethod(this, std::move(emission), Qt::QueuedConnection);
}

void EndWorker::operator()(WorkerThread *worker) const
{
    worker->disconnect();
    worker->requestStop();
    while (!worker->wait(interruptInterval))
        worker->interrupt();
    delete worker;
}

void RetireWorker::operator()(WorkerThread *worker) const
{
    worker->disconnect();
    worker->requestStop();
    // If the worker has finished already, it is deleted below, together with its pending deleteLater().
    QObject::connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    if (!worker->isRunning()) {
        delete worker;
        return;
    }
    static const bool waitsAtTheEnd = (qAddPostRoutine(waitForRetiredWorkers), true);
    Q_UNUSED(waitsAtTheEnd)
    retiredWorkers().append(worker);
    QObject::connect(worker, &QObject::destroyed, [worker] { retiredWorkers().removeOne(worker); });
}

void waitForRetiredWorkers()
{
    while (!retiredWorkers().isEmpty())
        EndWorker()(retiredWorkers().takeLast());
}

} // namespace core
