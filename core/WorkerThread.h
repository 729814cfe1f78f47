// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QString>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>

namespace core
{

// A job on its own thread. A subclass implements work(), which calls an engine function with cancelFlag() and
// stores the result in a member; the owner reads it when done() arrives. A subclass with a differently named
// end signal connects done() to it in its constructor. Does not delete itself: owned through WorkerPointer or
// RetiringPointer, or by a JobHost.
class WorkerThread : public QThread
{
    Q_OBJECT

public:
    // work() runs with this priority.
    explicit WorkerThread(Priority priority = InheritPriority) : m_priority(priority) {}

    // As QThread::start(), but if no thread can be created, that becomes the job's error.
    void start();
    // Any thread; the job ends soon, and done() is emitted as usual.
    void requestStop();
    bool stopRequested() const noexcept { return m_cancel.isSet(); }
    // After done(): why the job failed, as a text for the user; empty if it did not. Being stopped is not a
    // failure.
    const QString &error() const noexcept { return m_error; }

signals:
    // Emitted once when work() has returned or thrown, on the thread that this object lives in.
    void done();

protected:
    const CancelFlag &cancelFlag() const noexcept { return m_cancel; }

    // Runs on the worker thread. Exceptions become error().
    virtual void work() = 0;
    // Called after work() has thrown, on the same thread, to discard partial results.
    virtual void abandon() {}
    // Cancels a blocking disk or network call of work(), where the system supports it. Called several times a
    // second on the thread that this object lives in, from requestStop() until work() has returned.
    virtual void interrupt() {}

    // Called by work(): runs `emission` later on the thread that this object lives in, but not after the
    // worker has been ended: deliver([this] { emit halfDone(); }). By contrast, a signal emitted directly in
    // work() through a queued connection may still arrive then.
    void deliver(std::function<void()> emission);

private:
    friend struct EndWorker;

    void run() final;
    void fail(const QString &error);
    void insist();

    const Priority m_priority;
    CancelFlag m_cancel;
    std::atomic_bool m_begun = false;
    QString m_error;
};

// Ends a worker on the thread that it lives in: its signals are no longer delivered (see deliver() about
// those already queued), it is asked to stop, waited for and deleted.
struct EndWorker {
    void operator()(WorkerThread *worker) const;
};

template <class Worker>
using WorkerPointer = std::unique_ptr<Worker, EndWorker>;

// Ends a worker without waiting, since an unresponsive disk may block it: it is silenced and asked to stop as
// above, and deleted when its thread has finished. Only for workers that own all of their data and answer by
// signals without direct connections: functions called directly by the worker are still called.
struct RetireWorker {
    void operator()(WorkerThread *worker) const;
};

template <class Worker>
using RetiringPointer = std::unique_ptr<Worker, RetireWorker>;

// Waits for retired workers that have not finished. The application object does this on exit; call it earlier
// before removing something that they use.
void waitForRetiredWorkers();

} // namespace core
