// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FLWidget.h"
#include "widgets/JobHost.h"
#include "widgets/ScanPage.h"

#include <QAction>
#include <QPointer>
#include <QStackedLayout>

#include <initializer_list>

class StartPage;

// The form of a module that scans a folder: a stack of pages, one of which shows the progress of the scan.
// Progress arrives through the slots below, at most twenty times a second.
class ScanForm : public FLWidget
{
    Q_OBJECT

public:
    // The form in which a scanned folder is stored and displayed, from any spelling: "C:\\", "C:\\x".
    static QString shownRoot(const QString &chosen);

public slots:
    void handleUpdatePath(const QString &path) { m_progress->setPath(path); }
    void handleUpdateTotalSubFolder(int total) { m_progress->setTotalSteps(total); }
    void handleUpdateScanProgress() { m_progress->setSteps(m_jobs.progress().steps); }
    void handleUpdateTotalItemScan(int items) { m_progress->setItems(items); }
    void handleScanCancel() { m_jobs.cancel(); }

signals:
    // Emitted when a page is shown, for observers outside the form (tests).
    void startPageShown();
    void resultsShown();

protected:
    // A message for a job's error; empty if there is none.
    static QString failureText(const QString &error);

    // The progress page becomes a child of the form.
    ScanForm(ScanPage *progress, QWidget *parent);

    // Shows the progress page and runs a scan worker, which must have the signals used by JobHost::follow().
    template <class Worker, class Ended>
    void startScan(const QString &title, const QString &stopping, const QString &busyText, Worker *worker,
                   Ended ended)
    {
        JobOptions options{busyText, m_progress, title, m_root, stopping, {}, {}};
        options.progress = [this](const core::ScanProgress &progress) { showProgress(progress); };
        m_jobs.follow(worker);
        m_pages->setCurrentWidget(m_progress);
        m_jobs.start(std::move(options), worker, std::move(ended));
    }

    // Goes back from a result to the start page, where a notice offers to show it again: it is kept until the
    // next scan. Both are pages of m_pages.
    void leaveResult(StartPage *start, QWidget *result);

    QStackedLayout *m_pages;
    ScanPage *m_progress;
    QString m_root; // root of the running or displayed scan
    JobHost m_jobs; // if a job uses members of a derived form, that form must call drop() in its destructor

private:
    void showProgress(const core::ScanProgress &progress);

    QPointer<QWidget> m_leftResult;
    QAction m_showResult;
};
