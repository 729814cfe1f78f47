// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/WorkerThread.h"

#include <QPointer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>

#include <atomic>

namespace
{

// Works until it is asked to stop, or, when `brief`, not at all.
class Job : public core::WorkerThread
{
    Q_OBJECT

public:
    Job(bool brief, std::atomic_int &running) : m_brief(brief), m_running(running) {}

signals:
    void resultReady();

protected:
    void run() override
    {
        ++m_running;
        while (!m_brief && !cancelFlag().isSet())
            QThread::yieldCurrentThread();
        --m_running;
        deliver([this] { emit resultReady(); });
    }

private:
    const bool m_brief;
    std::atomic_int &m_running;
};

// In one call that takes its time, whatever is asked of it.
class StuckJob : public core::WorkerThread
{
    Q_OBJECT

public:
    explicit StuckJob(QSemaphore &disk) : m_disk(disk) {}

signals:
    void resultReady();

protected:
    void run() override
    {
        m_disk.acquire();
        deliver([this] { emit resultReady(); });
    }

private:
    QSemaphore &m_disk;
};

// In a call that can be ended from outside.
class WaitingJob : public StuckJob
{
public:
    explicit WaitingJob(QSemaphore &disk) : StuckJob(disk), m_call(disk) {}

protected:
    void interrupt() override { m_call.release(); }

private:
    QSemaphore &m_call;
};

} // namespace

class TestWorkerThread : public QObject
{
    Q_OBJECT

private slots:
    void endedWorkerIsSilent();
    void finishSignalOnItsWayIsDropped();
    void aRetiredWorkerIsNotWaitedFor();
    void retiredWorkersCanBeWaitedFor();
    void aStopInterruptsWhatTheJobWaitsFor();
};

// Also right after the start, when run() may not have been reached, and without a start.
void TestWorkerThread::endedWorkerIsSilent()
{
    for (int round = 0; round < 50; ++round) {
        std::atomic_int running = 0;
        int signalCount = 0;
        core::WorkerPointer<Job> job(new Job(false, running));
        connect(job.get(), &Job::resultReady, this, [&] { ++signalCount; });
        connect(job.get(), &QThread::finished, this, [&] { ++signalCount; });
        if (round > 0)
            job->start();
        if (round % 2 == 0 && round > 0)
            QTRY_COMPARE(running.load(), 1);
        job.reset();
        QCOMPARE(running.load(), 0);
        QCoreApplication::processEvents();
        QCOMPARE(signalCount, 0);
    }
}

void TestWorkerThread::finishSignalOnItsWayIsDropped()
{
    std::atomic_int running = 0;
    int signalCount = 0;
    core::WorkerPointer<Job> job(new Job(true, running));
    connect(job.get(), &Job::resultReady, this, [&] { ++signalCount; });
    job->start();
    QVERIFY(job->wait(5000)); // it is posted now, and no event has been processed
    job.reset();
    QCoreApplication::processEvents();
    QCOMPARE(signalCount, 0);
}

void TestWorkerThread::aRetiredWorkerIsNotWaitedFor()
{
    QSemaphore disk;
    int signalCount = 0;
    core::RetiringPointer<StuckJob> job(new StuckJob(disk));
    QPointer<StuckJob> retired(job.get());
    connect(job.get(), &StuckJob::resultReady, this, [&] { ++signalCount; });
    job->start();
    job.reset(new StuckJob(disk)); // would hang here
    QVERIFY(retired && retired->isRunning() && retired->stopRequested());
    disk.release();
    QTRY_VERIFY(!retired);
    QCOMPARE(signalCount, 0);
    // One that was never started, and one that has ended.
    retired = job.get();
    job.reset(new StuckJob(disk));
    QVERIFY(!retired);
    disk.release();
    retired = job.get();
    job->start();
    QVERIFY(job->wait(5000));
    job.reset();
    QVERIFY(!retired);
}

void TestWorkerThread::retiredWorkersCanBeWaitedFor()
{
    QSemaphore disk;
    core::RetiringPointer<StuckJob> job(new StuckJob(disk));
    const QPointer<StuckJob> retired(job.get());
    job->start();
    job.reset();
    QVERIFY(retired);
    disk.release();
    core::waitForRetiredWorkers();
    QVERIFY(!retired);
}

void TestWorkerThread::aStopInterruptsWhatTheJobWaitsFor()
{
    QSemaphore disk;
    core::WorkerPointer<WaitingJob> job(new WaitingJob(disk));
    QSignalSpy spy(job.get(), &StuckJob::resultReady);
    job->start();
    QVERIFY(!job->wait(50));
    job->requestStop();
    QVERIFY(spy.wait(5000));
    // And without an event loop.
    job.reset(new WaitingJob(disk));
    job->start();
    job.reset();
}

QTEST_GUILESS_MAIN(TestWorkerThread)
#include "tst_worker_thread.moc"
