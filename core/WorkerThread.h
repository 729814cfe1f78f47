// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QThread>

#include <functional>
#include <memory>

namespace core
{

// A job on its own thread. run() calls an engine function with the cancel flag and emits the finish signal of
// the subclass. A subclass does not delete itself: it is owned through WorkerPointer or RetiringPointer.
class WorkerThread : public QThread
{
    Q_OBJECT

public:
    using QThread::QThread;

    // From any thread; the job ends soon through its normal finish signal.
    void requestStop();
    bool stopRequested() const noexcept { return m_cancel.isSet(); }

protected:
    const CancelFlag &cancelFlag() const noexcept { return m_cancel; }

    // Ends a call in which run() waits for a disk or a share, where the system can. Called on the thread that
    // this object lives in, from requestStop() until run() has ended, several times a second.
    virtual void interrupt() {}

    // Called by run(): does `emission` later, on the thread that this object lives in, and not at all when
    // the worker is ended first. A finish signal is emitted through it: deliver([this] { emit resultReady();
    // }). One that run() emits itself through a queued connection still arrives after the worker's end.
    void deliver(std::function<void()> emission);

private:
    friend struct EndWorker;

    void insist();

    CancelFlag m_cancel;
};

// Ends a worker, on the thread that it lives in: no signal of it is delivered any more (see deliver() about
// those that wait in a queue already), it is asked to stop, waited for and deleted.
struct EndWorker {
    void operator()(WorkerThread *worker) const;
};

template <class Worker>
using WorkerPointer = std::unique_ptr<Worker, EndWorker>;

// Ends a worker without waiting for it, which may take as long as a disk that does not answer: it is silenced
// and asked to stop like one that is ended, and deleted when it has come to its end. Only for workers that
// hold nothing but their own data and answer by signals, none of which is connected directly: a function that
// deliver() calls itself is called all the same.
struct RetireWorker {
    void operator()(WorkerThread *worker) const;
};

template <class Worker>
using RetiringPointer = std::unique_ptr<Worker, RetireWorker>;

// Waits for the retired workers that have not come to their end. The application object does so when it goes;
// whoever takes away earlier what they work with calls it before.
void waitForRetiredWorkers();

} // namespace core
