// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FLWidget.h"
#include "widgets/JobHost.h"
#include "widgets/ScanPage.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>

#include <functional>
#include <stdexcept>

using namespace Qt::StringLiterals;
using core::JobControl;

namespace
{

// The page of a module with jobs of its own and of its results page.
struct Page : FLWidget {
    Page()
    {
        connect(this, &FLWidget::showToolbarSignal, this, [this](bool show) { toolbar.append(show); });
    }

    // A job that ends with the number 7 when it is let go or stopped.
    void start(JobHost &host, const std::function<void()> &handler = {}, JobOptions options = {})
    {
        if (options.busyText.isEmpty())
            options.busyText = u"the count"_s;
        host.run(
            std::move(options),
            [this](const JobControl &job) {
                while (!job.cancel.isSet() && !go.tryAcquire(1, 5))
                    ;
                return 7;
            },
            [this, handler](auto &job) {
                ended.append(u"%1%2"_s.arg(job.takeResult().value_or(-1))
                                 .arg(job.stopRequested() ? u" stopped"_s : QString()));
                if (handler)
                    handler();
            });
    }

    QSemaphore go;
    QStringList ended;
    QList<bool> toolbar;
    QWidget results{this};
    JobHost jobs{this};
    JobHost resultJobs{&results};
};

} // namespace

class JobHostTest : public QObject
{
    Q_OBJECT

private slots:
    void aJobEndsThroughItsHandlerOnce();
    void aFailureReachesTheHandlerAsAText();
    void theWindowIsClosedWhenTheLastJobHasEnded_data();
    void theWindowIsClosedWhenTheLastJobHasEnded();
    void aJobOfSomebodyElseIsStoppedAndMayEndAtOnce();
    void theNextJobBeginsInTheHandler();
    void theFormMayGoDuringAJob();
    void thePageShowsTheProgress();
};

void JobHostTest::aJobEndsThroughItsHandlerOnce()
{
    for (const bool cancelled : {false, true}) {
        Page page;
        page.start(page.jobs);
        QVERIFY(page.jobs.isBusy() && page.isBusy());
        QCOMPARE(page.busyText(), u"the count"_s);
        QCOMPARE(page.toolbar, QList<bool>({false}));
        if (cancelled)
            page.jobs.cancel();
        else
            page.go.release();
        QTRY_VERIFY(!page.ended.isEmpty());
        QVERIFY(!page.isBusy() && page.busyText().isEmpty());
        page.jobs.cancel(); // nothing runs
        QTest::qWait(20);
        QCOMPARE(page.ended, QStringList(cancelled ? u"7 stopped"_s : u"7"_s));
        QCOMPARE(page.toolbar, QList<bool>({false, true}));
    }
}

void JobHostTest::aFailureReachesTheHandlerAsAText()
{
    Page page;
    page.jobs.run(
        {.busyText = u"the count"_s}, [](const JobControl &) -> int { throw std::runtime_error("no drive"); },
        [&page](auto &job) {
            page.ended.append(job.error());
            page.ended.append(job.takeResult() ? u"result"_s : u"none"_s);
        });
    QTRY_COMPARE(page.ended, (QStringList{u"no drive"_s, u"none"_s}));
}

void JobHostTest::theWindowIsClosedWhenTheLastJobHasEnded_data()
{
    QTest::addColumn<std::function<void(Page &)>>("whenTheFirstEnds");
    QTest::addColumn<int>("closed");
    using Action = std::function<void(Page &)>;
    QTest::newRow("nothing to say") << Action([](Page &) {}) << 1;
    QTest::newRow("something to say") << Action([](Page &page) { page.jobs.keepOpen(); }) << 0;
    QTest::newRow("one job follows from it") << Action([](Page &page) {
        page.start(page.jobs);
        page.go.release();
    }) << 1;
}

// Whichever of the page's widgets runs them.
void JobHostTest::theWindowIsClosedWhenTheLastJobHasEnded()
{
    QFETCH(std::function<void(Page &)>, whenTheFirstEnds);
    QFETCH(int, closed);
    Page page;
    QSignalSpy close(&page, &FLWidget::closeApp);
    page.requestStop(); // nothing runs: the window closes by itself
    page.start(page.resultJobs);
    bool isOther = false; // ends by itself when it is asked to, later
    page.jobs.begin({.busyText = u"other"_s}, [&isOther] { isOther = true; });
    page.requestStop();
    QVERIFY(isOther);
    QTRY_COMPARE(page.ended, QStringList(u"7 stopped"_s));
    QTest::qWait(20);
    QCOMPARE(close.count(), 0);
    QCOMPARE(page.toolbar, QList<bool>({false}));
    page.jobs.end();
    page.start(page.jobs, [&] { whenTheFirstEnds(page); });
    page.requestStop();
    QTRY_VERIFY(page.ended.size() > 1 && !page.isBusy());
    QTest::qWait(20);
    QCOMPARE(close.count(), 1 + closed);
    // Whoever only cancels stays.
    page.start(page.jobs);
    page.jobs.cancel();
    QTRY_VERIFY(!page.isBusy());
    QTest::qWait(20);
    QCOMPARE(close.count(), 1 + closed);
}

void JobHostTest::aJobOfSomebodyElseIsStoppedAndMayEndAtOnce()
{
    Page page;
    QSignalSpy close(&page, &FLWidget::closeApp);
    page.resultJobs.begin({.busyText = u"removal"_s}, [&page] { page.resultJobs.end(); });
    QCOMPARE(page.busyText(), u"removal"_s);
    page.requestStop();
    QVERIFY(!page.isBusy());
    QCOMPARE(close.count(), 0); // the window is still refusing to close
    QTRY_COMPARE(close.count(), 1);
    page.resultJobs.end(); // already
    QCOMPARE(page.toolbar, QList<bool>({false, true}));
}

void JobHostTest::theNextJobBeginsInTheHandler()
{
    Page page;
    page.start(page.jobs, [&page] { page.start(page.jobs); });
    page.go.release();
    QTRY_COMPARE(page.ended.size(), 1);
    QVERIFY(page.isBusy());
    page.go.release();
    QTRY_COMPARE(page.ended.size(), 2);
    QCOMPARE(page.toolbar, QList<bool>({false, true, false, true}));
}

// With a job of its own, and of a widget that goes after it.
void JobHostTest::theFormMayGoDuringAJob()
{
    for (const int which : {0, 1, 2}) {
        auto page = std::make_unique<Page>();
        if (which != 1)
            page->start(page->jobs);
        auto *child = new QWidget(page.get());
        auto *jobs = new JobHost(child);
        if (which != 0)
            jobs->begin({.busyText = u"x"_s}, {});
        if (which == 2)
            delete child;
        page.reset();
        QCoreApplication::processEvents();
    }
}

void JobHostTest::thePageShowsTheProgress()
{
    using enum ScanPage::Figure;
    Page page;
    auto *shown = new ScanPage(&page, {Steps, Bytes, Rate, TimeLeft});
    const auto text = [shown](const char *name) {
        return shown->findChild<QLabel *>(QLatin1StringView(name))->text();
    };
    QSemaphore go;
    page.jobs.run(
        {.busyText = u"x"_s,
         .page = shown,
         .title = u"Copying"_s,
         .subject = u"C:\\r"_s,
         .stoppingTitle = u"Stopping"_s},
        [&go](const JobControl &job) {
            go.acquire();
            job.progress.setPath(u"C:\\r\\a"_s);
            job.progress.setTotalSteps(17);
            job.progress.setSteps(3);
            job.progress.setTotalBytes(4 << 20);
            job.progress.setBytes(1 << 20);
            while (!job.cancel.isSet())
                QThread::msleep(1);
            return true;
        },
        [](auto &) {});
    QCOMPARE(text("scanTitleLabel"), u"Copying"_s);
    QCOMPARE(text("timeLeftLabel"), u"-"_s);
    go.release();
    QTRY_COMPARE(text("stepsLabel"), u"3 of 17"_s);
    QCOMPARE(text("bytesLabel"), u"1.00 MB of 4.00 MB"_s);
    QCOMPARE(shown->findChild<QProgressBar *>()->value(), 250);
    QVERIFY(!shown->findChild<QLabel *>(u"itemsLabel"_s));
    QTest::qWait(1200);
    page.jobs.relay().setBytes(2 << 20); // a quarter of a million a second, and as long again
    QTRY_VERIFY(text("rateLabel").endsWith(u" MB/s"_s));
    QTRY_VERIFY(text("timeLeftLabel").startsWith(u"0:0"_s));
    page.jobs.cancel();
    QCOMPARE(text("scanTitleLabel"), u"Stopping"_s);
    QVERIFY(!shown->findChild<QPushButton *>()->isEnabled());
    QTRY_VERIFY(!page.isBusy());
}

QTEST_MAIN(JobHostTest)
#include "tst_job_host.moc"
