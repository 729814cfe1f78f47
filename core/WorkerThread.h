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

// A job on its own thread. A subclass writes work(), which calls an engine function with cancelFlag() and
// keeps the result in a member; whoever started the job reads the member when done() arrives. A subclass
// whose end has a name of its own connects done() to that signal in its constructor. It does not delete
// itself: it is owned through WorkerPointer or RetiringPointer, or by a JobHost.
class WorkerThread : public QThread
{
    Q_OBJECT

public:
    // work() runs with this priority.
    explicit WorkerThread(Priority priority = InheritPriority) : m_priority(priority) {}

    // As QThread's, and where the system has no thread left, that is the job's error.
    void start();
    // From any thread; the job ends soon, and done() is emitted as always.
    void requestStop();
    bool stopRequested() const noexcept { return m_cancel.isSet(); }
    // After done(): why the job failed, in words for the user; empty when it did not. Being stopped is no
    // failure.
    const QString &error() const noexcept { return m_error; }

signals:
    // Once, when work() has returned or thrown, on the thread that this object lives in.
    void done();

protected:
    const CancelFlag &cancelFlag() const noexcept { return m_cancel; }

    // The job, on a thread of its own. What it throws becomes error().
    virtual void work() = 0;
    // Called after a work() that threw, on the same thread: drops what it has left half done.
    virtual void abandon() {}
    // Ends a call in which work() waits for a disk or a share, where the system can. Called on the thread
    // that this object lives in, from requestStop() until work() has ended, several times a second.
    virtual void interrupt() {}

    // Called by work(): does `emission` later, on the thread that this object lives in, and not at all when
    // the worker is ended first: deliver([this] { emit halfDone(); }). A signal that work() emits itself
    // through a queued connection still arrives after the worker's end.
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

// Ends a worker, on the thread that it lives in: no signal of it is delivered any more (see deliver() about
// those that wait in a queue already), it is asked to stop, waited for and deleted.
struct EndWorker {
    void operator()(WorkerThread *worker) const;
};

template <class Worker>
using WorkerPointer = std::unique_ptr<Worker, EndWorker>;

// Ends a worker without waiting for it, which may take as long as a disk that does not answer: it is silenced
// and asked to stop like one that is ended, and deleted when its thread has finished. Only for workers that
// hold nothing but their own data and answer by signals, none of which is connected directly: a function that
// deliver() calls itself is called all the same.
struct RetireWorker {
    void operator()(WorkerThread *worker) const;
};

template <class Worker>
using RetiringPointer = std::unique_ptr<Worker, RetireWorker>;

// Waits for the retired workers that have not finished. The application object does so when it goes; whoever
// takes away earlier what they work with calls it before.
void waitForRetiredWorkers();

} // namespace core
