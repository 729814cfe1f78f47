// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AbandonableTask.h"
#include "platform/DetachedThread.h"

#include <QSemaphore>
#include <QTest>
#include <QThread>

#include <atomic>
#include <memory>
#include <vector>

class TestDetachedThread : public QObject
{
    Q_OBJECT

private slots:
    void runsBesideItsCaller();
    void thoseGivenUpAreBounded();
};

void TestDetachedThread::runsBesideItsCaller()
{
    auto go = std::make_shared<QSemaphore>();
    const std::weak_ptr<QSemaphore> held = go;
    QSemaphore ended;
    std::atomic_int elsewhere = 0;
    constexpr int tasks = 20;
    for (int i = 0; i < tasks; ++i) {
        platform::runDetached([go, &ended, &elsewhere, caller = QThread::currentThreadId()] {
            go->acquire();
            elsewhere += QThread::currentThreadId() != caller ? 1 : 0;
            ended.release();
        });
    }
    QCOMPARE(ended.available(), 0); // all of them hang, and nothing waits for them
    go->release(tasks);
    QVERIFY(ended.tryAcquire(tasks, 60'000));
    QCOMPARE(elsewhere, tasks);
    // What a task holds goes with it.
    go.reset();
    QTRY_VERIFY(held.expired());
}

void TestDetachedThread::thoseGivenUpAreBounded()
{
    constexpr int max = platform::AbandonableTask::maxHanging;
    const auto go = std::make_shared<QSemaphore>();
    const auto ended = std::make_shared<QSemaphore>();
    const auto hang = [go, ended] {
        go->acquire();
        ended->release();
    };
    {
        std::vector<platform::AbandonableTask> wanted(max + 2);
        for (platform::AbandonableTask &task : wanted)
            QVERIFY(task.start(hang)); // only those given up count
        go->release();
        QVERIFY(ended->tryAcquire(1, 60'000));
    }
    platform::AbandonableTask next;
    QVERIFY(!next.start(hang));
    go->release(2); // one fewer than the bound is left
    QVERIFY(ended->tryAcquire(2, 60'000));
    bool started = false;
    QTRY_VERIFY((started = started || next.start([] {})));
    go->release(max);
    QVERIFY(ended->tryAcquire(max - 1, 60'000));
}

QTEST_GUILESS_MAIN(TestDetachedThread)

#include "tst_detached_thread.moc"
