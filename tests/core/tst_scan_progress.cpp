// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ScanProgress.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;
using core::ProgressRelay;
using core::ScanProgress;

class TestScanProgress : public QObject
{
    Q_OBJECT

private slots:
    void floodBecomesATrickle();
    void passesOnWithoutFurtherChange();
    void finishAndRestart();
};

// A worker's signals for every entry reach the form at most twenty times a second, on the form's thread, with
// the last values at the end.
void TestScanProgress::floodBecomesATrickle()
{
    ProgressRelay relay;
    int reports = 0, stepsBefore = 0;
    bool onOwnThread = true, inOrder = true;
    connect(&relay, &ProgressRelay::changed, this, [&](const ScanProgress &progress) {
        ++reports;
        onOwnThread = onOwnThread && QThread::currentThread() == thread();
        inOrder = inOrder && progress.steps >= stepsBefore;
        stepsBefore = progress.steps;
    });
    QElapsedTimer time;
    time.start();
    int steps = 0;
    const std::unique_ptr<QThread> worker(QThread::create([&] {
        relay.setTotalSteps(9);
        while (time.elapsed() < 400 || steps < 100) {
            relay.setItems(3 * ++steps);
            relay.setPath(u"C:\\x"_s);
            relay.addStep();
        }
    }));
    worker->start();
    while (!worker->isFinished())
        QTest::qWait(5);
    relay.finish();
    const double seconds = double(time.elapsed()) / 1000.0;

    QVERIFY2(reports >= 2, qPrintable(QString::number(reports)));
    QVERIFY2(reports <= seconds * 20 + 1, qPrintable(u"%1 in %2 s"_s.arg(reports).arg(seconds)));
    QVERIFY(onOwnThread);
    QVERIFY(inOrder);
    QCOMPARE(relay.latest().steps, steps);
    QCOMPARE(stepsBefore, steps);
    QCOMPARE(relay.latest().items, 3 * steps);
    QCOMPARE(relay.latest().totalSteps, 9);
}

void TestScanProgress::passesOnWithoutFurtherChange()
{
    ProgressRelay relay;
    QSignalSpy spy(&relay, &ProgressRelay::changed);
    relay.setPath(u"a"_s);
    QVERIFY(spy.wait());
    relay.setPath(u"b"_s);
    QVERIFY(spy.wait());
    QCOMPARE(spy.count(), 2);
    QVERIFY(!spy.wait(150)); // nothing changed
}

void TestScanProgress::finishAndRestart()
{
    ProgressRelay relay;
    QSignalSpy spy(&relay, &ProgressRelay::changed);
    relay.setItems(7);
    relay.finish();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first().value<ScanProgress>().items, 7);
    relay.setItems(8);
    QVERIFY(!spy.wait(150));
    QCOMPARE(relay.latest().items, 7);
    relay.restart();
    relay.addStep();
    QVERIFY(spy.wait());
    const auto progress = spy.last().first().value<ScanProgress>();
    QCOMPARE(progress.steps, 1);
    QCOMPARE(progress.items, 0);
}

QTEST_GUILESS_MAIN(TestScanProgress)
#include "tst_scan_progress.moc"
