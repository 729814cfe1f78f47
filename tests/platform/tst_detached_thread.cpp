// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DetachedThread.h"

#include <QSemaphore>
#include <QTest>
#include <QThread>

#include <atomic>
#include <memory>

class TestDetachedThread : public QObject
{
    Q_OBJECT

private slots:
    void runsBesideItsCaller();
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

QTEST_GUILESS_MAIN(TestDetachedThread)

#include "tst_detached_thread.moc"
