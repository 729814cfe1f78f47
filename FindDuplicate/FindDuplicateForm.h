// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/FindDuplicateThread.h"
#include "FindDuplicate/Settings.h"
#include "widgets/ScanForm.h"

#include <functional>
#include <memory>
#include <vector>

class FindDuplicateNoResultFoundForm;
class FindDuplicateResultForm;
class FindDuplicateStartForm;

// The duplicate file finder. Shows its start page, or the page of a scan or its result.
class FindDuplicateForm : public ScanForm
{
    Q_OBJECT

public:
    // Creates an enumerator for each scan.
    using EnumeratorFactory = std::function<std::unique_ptr<core::DirectoryEnumerator>()>;

    explicit FindDuplicateForm(QWidget *parent = nullptr);
    explicit FindDuplicateForm(EnumeratorFactory enumerators, QWidget *parent = nullptr);

    bool isScanning() const { return m_thread != nullptr; }
    // Of the last scan, largest files first.
    const std::vector<duplicates::DuplicateGroup> &groups() const { return *m_groups; }

public slots:
    // Scans a folder in any spelling. Does nothing while a scan or removal is running.
    void scan(const QString &folder);

    void onScanFinish();
    void OnBackToMain();
    void OnResultReady();
    void OnNoResult_backToMain();

signals:
    void noResultShown();

private:
    FindDuplicateJob makeJob(const QString &root);
    void prepareReport();
    void showNoResult();
    void showStartPage(const QString &notice = {});
    void showScope();
    void showOptions();
    template <class Page>
    void dropPage(Page *&page);

    EnumeratorFactory m_enumerators;
    duplicates::FinderSettings m_settings;
    // Shared with the results page.
    std::shared_ptr<std::vector<duplicates::DuplicateGroup>> m_groups;
    std::size_t m_filesCompared = 0;
    int m_foldersUnread = 0;

    FindDuplicateStartForm *m_start;
    FindDuplicateResultForm *m_results = nullptr;
    FindDuplicateNoResultFoundForm *m_noResult = nullptr;

    QString m_resultNotice;                  // shown with the result of the running scan
    FindDuplicateThread *m_thread = nullptr; // of the running scan; owned by the host
};
