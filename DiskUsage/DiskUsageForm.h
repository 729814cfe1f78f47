// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/DiskUsageWorkerThread.h"
#include "core/ScanProgress.h"
#include "platform/Drives.h"
#include "widgets/FLWidget.h"

#include <QPersistentModelIndex>

#include <functional>
#include <memory>

class DiskUsageClearRamForm;
class DiskUsageClearRamThread;
class DiskUsageFolderScanThread;
class DiskUsageOptionsForm;
class DiskUsageResultsForm;
class DiskUsageScanProgressForm;
class DiskUsageStartForm;
class QStackedLayout;

// The Folder Size Analyzer. Shows one of its pages at a time and runs one job at a time: a scan, the scan of
// one folder of the result, an export, or the freeing of a result.
class DiskUsageForm : public FLWidget
{
    Q_OBJECT

public:
    // Each scan has an enumerator of its own, made by this.
    using EnumeratorFactory = std::function<std::unique_ptr<core::DirectoryEnumerator>()>;

    explicit DiskUsageForm(QWidget *parent = nullptr);
    DiskUsageForm(EnumeratorFactory enumerators, platform::DriveLister::Reader drives,
                  QWidget *parent = nullptr);
    ~DiskUsageForm() override;

    bool isBusy() const override;
    void requestStop() override;
    bool mayLeave() override;
    QString busyText() const override;

    bool isScanning() const;
    bool isClearingRam() const { return m_clear != nullptr; }
    // The models of the result, empty while there is none.
    const FolderModel &folderModel() const { return *m_folders; }
    const BiggestFilesModel &biggestFilesModel() const { return *m_biggestFiles; }
    const DataFilesModel &dataFilesModel() const { return *m_dataFiles; }

public slots:
    // Scans a folder in any spelling, and remembers it among the recent ones. Does nothing while a job runs.
    void scan(const QString &folder);

    void handleUpdatePath(const QString &path);
    void handleUpdateTotalSubFolder(int total);
    void handleUpdateScanProgress();
    void handleUpdateTotalItemScan(int items);
    void handleResults();
    void handleScanCancel();
    void onClearRamFinish();

signals:
    // A page is on show; for whoever watches the form from outside.
    void startPageShown();
    void resultsShown();

private:
    void buildPages();
    void connectPages();

    void startScan(const QString &root);
    ScanJob makeJob(const QString &root) const;
    void showProgress(const core::ScanProgress &progress);
    void showResults(std::shared_ptr<diskusage::ScanResult> result);
    void scanFolderAgain(const QModelIndex &folder);
    void handleFolderResults();
    void scanAllAgain();
    void startClearing();
    void showStartPage(const QString &notice = {});
    void showOptions();

    EnumeratorFactory m_enumerators;
    // The models outlive the threads that fill and free them.
    std::unique_ptr<FolderModel> m_folders;
    std::unique_ptr<BiggestFilesModel> m_biggestFiles;
    std::unique_ptr<DataFilesModel> m_dataFiles;

    QStackedLayout *m_pages;
    DiskUsageStartForm *m_start;
    DiskUsageScanProgressForm *m_progress;
    DiskUsageResultsForm *m_results;
    DiskUsageClearRamForm *m_clearing;
    DiskUsageOptionsForm *m_options;

    QString m_root;                      // of the scan that runs or is shown
    QString m_nextRoot;                  // what to scan when the models are free again
    QString m_resultNotice;              // to be shown with the result of the scan that runs
    core::FileTypeTable m_scanFileTypes; // with which the result was made
    QPersistentModelIndex m_folderIndex; // being scanned again
    int m_stepsShown = 0;
    bool m_totalShown = false;
    core::ProgressRelay m_relay;
    core::ProgressRelay m_folderRelay;
    core::WorkerPointer<DiskUsageWorkerThread> m_scan;
    core::WorkerPointer<DiskUsageFolderScanThread> m_folderScan;
    core::WorkerPointer<DiskUsageClearRamThread> m_clear;
};
