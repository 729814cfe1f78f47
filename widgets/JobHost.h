// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FunctionJob.h"

#include <QPointer>
#include <QString>

#include <functional>
#include <utility>

class FLWidget;
class ScanPage;

// How a job is displayed. Everything except busyText is optional.
struct JobOptions {
    QString busyText = {};      // what is being stopped when the window closes: "the scan of a folder"
    ScanPage *page = nullptr;   // started, updated and completed by the host; the form shows it
    QString title = {};         // title of the page
    QString subject = {};       // shown on the page's path line until the job reports a path
    QString stoppingTitle = {}; // title of the page after a cancel
    std::function<void()> interrupt = {}; // for run(), see core::WorkerThread::interrupt()
    // Called instead of updating the page, at most twenty times a second while the job runs.
    std::function<void(const core::ScanProgress &)> progress = {};
};

// Runs the jobs of a form, one at a time. Manages the worker, its progress relay, the progress page and
// cancelling, and reports to the module's page (the FLWidget that is the owner or contains it) that it is
// busy. If a job is running when the host is destroyed, it is stopped and waited for, and its handler is not
// called.
//
//     m_jobs.run(
//         {.busyText = tr("the search"), .page = m_progress, .title = tr("Searching ..."), .subject = root},
//         [options](const core::JobControl &job) { return search(options, job.progress, job.cancel); },
//         [this](auto &job) {
//             if (auto result = job.takeResult(); result && !job.stopRequested())
//                 show(std::move(*result));
//             else
//                 showStartPage(job.error()); // empty after a cancel
//         });
class JobHost : public QObject
{
    Q_OBJECT

public:
    explicit JobHost(QWidget *owner);
    ~JobHost() override;

    bool isBusy() const { return m_busy; }
    const QString &busyText() const { return m_options.busyText; }
    core::ScanProgress progress() const { return m_relay.latest(); }

    // Runs a function on a thread of its own: see core::FunctionJob. `ended(job)` is called once, on the
    // interface thread, however the job ended; by then the host can start the next job.
    template <class Work, class Ended>
    void run(JobOptions options, Work work, Ended ended)
    {
        auto *job = new core::FunctionJob<Work>(std::move(work), m_relay, std::move(options.interrupt));
        start(std::move(options), job, std::move(ended));
    }

    // Runs a custom worker, taking ownership. `ended(worker)` is called as above, and the worker is deleted
    // afterwards.
    template <class Worker, class Ended>
    void start(JobOptions options, Worker *worker, Ended ended)
    {
        startWorker(std::move(options), worker,
                    [worker, ended = std::move(ended)]() mutable { ended(*worker); });
    }

    // Connects the four per-entry signals of a scan worker to the progress of its job. Call before start().
    template <class Scan>
    void follow(Scan *scan)
    {
        using core::ProgressRelay;
        connect(scan, &Scan::updatePath, &m_relay, &ProgressRelay::setPath, Qt::DirectConnection);
        connect(scan, &Scan::updateTotalSubFolder, &m_relay, &ProgressRelay::setTotalSteps,
                Qt::DirectConnection);
        connect(scan, &Scan::updateScanProgress, &m_relay, &ProgressRelay::addStep, Qt::DirectConnection);
        connect(scan, &Scan::updateTotalItemScan, &m_relay, &ProgressRelay::setItems, Qt::DirectConnection);
    }
    // For workers that report their progress themselves: thread-safe.
    core::ProgressRelay &relay() { return m_relay; }

    // For a job that is run by someone else: the page is busy between begin() and end(); cancel() calls
    // `stop`.
    void begin(JobOptions options, std::function<void()> stop);
    void end();

    // Called in the handler of an ended job, or before end(): there is something on the screen that the user
    // should see, so a window that is waiting to close stays open.
    void keepOpen();
    // Stops the running job, if any, and waits for it. Its handler is not called.
    void drop();

public slots:
    // Asks the job to stop. Its handler is called as usual.
    void cancel();

private:
    friend class FLWidget;

    void startWorker(JobOptions options, core::WorkerThread *worker, std::function<void()> ended);
    void markBegun(JobOptions options);
    void markEnded();
    void endWith(const std::function<void()> &ended);

    QWidget *const m_owner;
    FLWidget *m_form = nullptr; // while a job runs
    JobOptions m_options;
    std::function<void()> m_stop;
    bool m_busy = false;
    bool m_ending = false; // the handler of the last job is being called
    core::ProgressRelay m_relay;
    core::WorkerPointer<core::WorkerThread> m_worker; // destroyed before the relay that it uses
};
