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
    void dropsTheTaskWhenItHasEnded();
};

void TestDetachedThread::runsBesideItsCaller()
{
    const auto go = std::make_shared<QSemaphore>();
    const auto ended = std::make_shared<QSemaphore>();
    const auto elsewhere = std::make_shared<std::atomic_int>(0);
    constexpr int tasks = 20;
    for (int i = 0; i < tasks; ++i) {
        platform::runDetached([=, caller = QThread::currentThreadId()] {
            go->acquire();
            *elsewhere += QThread::currentThreadId() != caller ? 1 : 0;
            ended->release();
        });
    }
    QCOMPARE(ended->available(), 0); // all of them hang, and nothing waits for them
    go->release(tasks);
    QVERIFY(ended->tryAcquire(tasks, 5000));
    QCOMPARE(*elsewhere, tasks);
}

void TestDetachedThread::dropsTheTaskWhenItHasEnded()
{
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> watched = held;
    QSemaphore go;
    platform::runDetached([held = std::move(held), &go] { go.acquire(); });
    QVERIFY(!watched.expired());
    go.release();
    QTRY_VERIFY(watched.expired());
}

QTEST_GUILESS_MAIN(TestDetachedThread)

#include "tst_detached_thread.moc"
