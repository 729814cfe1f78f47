// SPDX-License-Identifier: GPL-3.0-or-later
#include <QTest>

#include <atomic>
#include <memory>
#include <thread>

namespace
{

std::atomic<int> seen = 0;

struct Witness {
    std::unique_ptr<int> value = std::make_unique<int>(42);
    ~Witness() { seen = value ? *value : -1; }
};

thread_local Witness witness;

} // namespace

class TestThreadExitOrder : public QObject
{
    Q_OBJECT

private slots:
    void destructorsSeeTheirObjects();
};

void TestThreadExitOrder::destructorsSeeTheirObjects()
{
    for (int i = 0; i < 3; ++i) {
        seen = 0;
        std::thread([] { QCOMPARE(*witness.value, 42); }).join();
        QCOMPARE(seen.load(), 42);
    }
}

QTEST_GUILESS_MAIN(TestThreadExitOrder)
#include "tst_thread_exit_order.moc"
