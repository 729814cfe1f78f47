// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FunctionJob.h"

#include <QPointer>
#include <QString>

#include <functional>
#include <utility>

class FLWidget;
class ScanPage;

// How a job is shown and what it is called. All of it is optional but busyText.
struct JobOptions {
    QString busyText = {};      // what is being stopped when the window closes: "the scan of a folder"
    ScanPage *page = nullptr;   // begun, kept up to date and completed by the host; the form shows it
    QString title = {};         // of the page
    QString subject = {};       // on the page's path line until the job tells of one
    QString stoppingTitle = {}; // of the page, from the cancel on
    std::function<void()> interrupt = {}; // for run(), see core::WorkerThread::interrupt()
    // Instead of what the page does by itself, at most twenty times a second while the job runs.
    std::function<void(const core::ScanProgress &)> progress = {};
};

// Runs the jobs of a form, one at a time: owns the worker, the relay of its progress, its page, the cancel,
// and tells the page of the module (the FLWidget that the owner is, or lies in) that it is busy. A job that
// runs when the host is destroyed is stopped and waited for, and its handler is not called.
//
//     m_jobs.run({.busyText = tr("the search"), .page = m_progress, .title = tr("Searching ..."), .subject =
//     root},
//                [options](const core::JobControl &job) { return search(options, job.progress, job.cancel);
//                }, [this](auto &job) {
//                    if (std::optional<SearchResult> result = job.takeResult(); result &&
//                    !job.stopRequested())
//                        show(std::move(*result));
//                    else
//                        showStartPage(job.error()); // empty when it was cancelled
//                });
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
    // interface thread, however the job ended; the host is free for the next job by then.
    template <class Work, class Ended>
    void run(JobOptions options, Work work, Ended ended)
    {
        auto *job = new core::FunctionJob<Work>(std::move(work), m_relay, std::move(options.interrupt));
        start(std::move(options), job, std::move(ended));
    }

    // Runs a worker of a class of its own, which becomes the host's. `ended(worker)` is called as above, and
    // the worker deleted afterwards.
    template <class Worker, class Ended>
    void start(JobOptions options, Worker *worker, Ended ended)
    {
        startWorker(std::move(options), worker,
                    [worker, ended = std::move(ended)]() mutable { ended(*worker); });
    }

    // Takes the four signals of a scan's worker, which come for every entry, into the progress of its job.
    // Before start().
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
    // For a worker that reports its progress itself: thread-safe.
    core::ProgressRelay &relay() { return m_relay; }

    // A job that somebody else runs: from begin() to end() the page is busy; `stop` is called by cancel().
    void begin(JobOptions options, std::function<void()> stop);
    void end();

    // For the handler of an ended job, and before end(): there is something on the screen that the user
    // should see, so that a window which waits for the job to end stays open.
    void keepOpen();
    // Stops the job that runs and waits for it, if any. Its handler is not called.
    void drop();

public slots:
    // Asks the job to stop. It ends through its handler.
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
    core::WorkerPointer<core::WorkerThread> m_worker; // goes before the relay, which it talks to
};
