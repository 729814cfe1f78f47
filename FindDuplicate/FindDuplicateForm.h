// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/FindDuplicateThread.h"
#include "FindDuplicate/Settings.h"
#include "core/ScanProgress.h"
#include "widgets/FLWidget.h"

#include <functional>
#include <memory>
#include <vector>

class FindDuplicateNoResultFoundForm;
class FindDuplicateResultForm;
class FindDuplicateStartForm;
class QStackedLayout;
class ScanInfoForm;

// The duplicate file finder. Shows its start page, and over it the page of a scan or of its result.
class FindDuplicateForm : public FLWidget
{
    Q_OBJECT

public:
    // Each scan has an enumerator of its own, made by this.
    using EnumeratorFactory = std::function<std::unique_ptr<core::DirectoryEnumerator>()>;

    explicit FindDuplicateForm(QWidget *parent = nullptr);
    explicit FindDuplicateForm(EnumeratorFactory enumerators, QWidget *parent = nullptr);
    ~FindDuplicateForm() override;

    // A scan, or a job of the results page.
    bool isBusy() const override;
    // The window is to close, and is closed when what runs has ended.
    void requestStop() override;
    QString busyText() const override;

    bool isScanning() const { return m_thread != nullptr; }
    // Of the last scan, largest file first.
    const std::vector<duplicates::DuplicateGroup> &groups() const { return *m_groups; }

public slots:
    // Scans a folder in any spelling. Does nothing while a scan or a removal runs.
    void scan(const QString &folder);

    void handleUpdatePath(const QString &path);
    void handleUpdateScanProgress();
    void handleUpdateTotalSubFolder(int total);
    void handleUpdateTotalItemScan(int totalItem);
    void handleScanCancel();
    void onScanFinish();
    void OnBackToMain();
    void OnResultReady();
    void OnNoResult_backToMain();

signals:
    // A page is on show; for whoever watches the form from outside.
    void startPageShown();
    void resultsShown();
    void noResultShown();

private:
    FindDuplicateJob makeJob(const QString &root);
    void startThread(const QString &root);
    void showProgress(const core::ScanProgress &progress);
    void prepareReport();
    void onJobEnded(bool hasNews);
    void showNoResult();
    void showStartPage(const QString &notice = {});
    void showScope();
    void showOptions();
    template <class Page>
    void dropPage(Page *&page);

    EnumeratorFactory m_enumerators;
    duplicates::FinderSettings m_settings;
    // Shared with the page that shows them.
    std::shared_ptr<std::vector<duplicates::DuplicateGroup>> m_groups;
    std::size_t m_filesCompared = 0;
    int m_foldersUnread = 0;

    QStackedLayout *m_pages;
    FindDuplicateStartForm *m_start;
    ScanInfoForm *m_progress = nullptr;
    FindDuplicateResultForm *m_results = nullptr;
    FindDuplicateNoResultFoundForm *m_noResult = nullptr;

    QString m_root; // of the scan that runs or is shown
    bool m_cancelRequested = false;
    QString m_resultNotice; // to be shown with the result of the scan that runs
    bool m_closeRequested = false;
    int m_stepsShown = 0;
    bool m_totalShown = false;
    core::ProgressRelay m_relay;
    core::WorkerPointer<FindDuplicateThread> m_thread;
};
