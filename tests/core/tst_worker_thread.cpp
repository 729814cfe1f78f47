// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/WorkerThread.h"

#include <QPointer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <functional>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

// Works until it is asked to stop, or, when `brief`, not at all.
class Job : public core::WorkerThread
{
    Q_OBJECT

public:
    Job(bool brief, std::atomic_int &running) : m_brief(brief), m_running(running) {}

protected:
    void work() override
    {
        ++m_running;
        while (!m_brief && !cancelFlag().isSet())
            QThread::yieldCurrentThread();
        --m_running;
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

protected:
    void work() override { m_disk.acquire(); }

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

class FailingJob : public core::WorkerThread
{
public:
    explicit FailingJob(std::function<void()> action) : m_action(std::move(action)) {}
    bool isAbandoned = false;

protected:
    void work() override { m_action(); }
    void abandon() override { isAbandoned = true; }

private:
    std::function<void()> m_action;
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
    void aThreadThatCannotBeHadIsTold();
    void whatAJobThrowsIsToldByText_data();
    void whatAJobThrowsIsToldByText();
};

// Also right after the start, when run() may not have been reached, and without a start.
void TestWorkerThread::endedWorkerIsSilent()
{
    for (int round = 0; round < 50; ++round) {
        std::atomic_int running = 0;
        int signalCount = 0;
        core::WorkerPointer<Job> job(new Job(false, running));
        connect(job.get(), &core::WorkerThread::done, this, [&] { ++signalCount; });
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
    connect(job.get(), &core::WorkerThread::done, this, [&] { ++signalCount; });
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
    connect(job.get(), &core::WorkerThread::done, this, [&] { ++signalCount; });
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
    QSignalSpy spy(job.get(), &core::WorkerThread::done);
    job->start();
    QVERIFY(!job->wait(50));
    job->requestStop();
    QVERIFY(spy.wait(5000));
    // And without an event loop.
    job.reset(new WaitingJob(disk));
    job->start();
    job.reset();
}

void TestWorkerThread::aThreadThatCannotBeHadIsTold()
{
#ifdef Q_OS_WIN
    QSKIP("Windows makes a thread with any stack that can be asked for.");
#endif
    FailingJob job([] {});
    job.setStackSize(1);
    QSignalSpy spy(&job, &core::WorkerThread::done);
    job.start();
    QCOMPARE(spy.count(), 0); // not before the caller goes on
    QVERIFY(spy.wait(5000));
    QCOMPARE(job.error(), u"The system has no thread left."_s);
    QVERIFY(job.isAbandoned);
}

void TestWorkerThread::whatAJobThrowsIsToldByText_data()
{
    QTest::addColumn<std::function<void()>>("action");
    QTest::addColumn<QString>("error");
    QTest::newRow("nothing") << std::function<void()>([] {}) << QString();
    QTest::newRow("memory") << std::function<void()>([] { throw std::bad_alloc(); })
                            << u"There is not enough memory."_s;
    QTest::newRow("too long") << std::function<void()>([] { std::vector<int>().reserve(SIZE_MAX); })
                              << u"There is not enough memory."_s;
    QTest::newRow("other") << std::function<void()>([] { throw std::runtime_error("no drive"); })
                           << u"no drive"_s;
}

// And it ends as any other.
void TestWorkerThread::whatAJobThrowsIsToldByText()
{
    QFETCH(std::function<void()>, action);
    QFETCH(QString, error);
    FailingJob job(action);
    QSignalSpy spy(&job, &core::WorkerThread::done);
    job.start();
    QVERIFY(spy.wait(5000));
    QVERIFY(job.wait(5000));
    QCOMPARE(job.error(), error);
    QCOMPARE(job.isAbandoned, !error.isEmpty());
    QVERIFY(!job.stopRequested());
    QCOMPARE(spy.count(), 1);
}

QTEST_GUILESS_MAIN(TestWorkerThread)
#include "tst_worker_thread.moc"
