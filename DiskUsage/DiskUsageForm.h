// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/DiskUsageWorkerThread.h"
#include "platform/Drives.h"
#include "widgets/ScanForm.h"

#include <QPersistentModelIndex>

#include <functional>
#include <memory>

class DiskUsageClearRamForm;
class DiskUsageFolderScanThread;
class DiskUsageOptionsForm;
class DiskUsageResultsForm;
class DiskUsageStartForm;

// The Folder Size Analyzer. Shows one of its pages at a time and runs one job at a time: a scan, the scan of
// one folder of the result, an export, or the freeing of a result.
class DiskUsageForm : public ScanForm
{
    Q_OBJECT

public:
    // Creates an enumerator for each scan.
    using EnumeratorFactory = std::function<std::unique_ptr<core::DirectoryEnumerator>()>;

    explicit DiskUsageForm(QWidget *parent = nullptr);
    DiskUsageForm(EnumeratorFactory enumerators, platform::DriveLister::Reader drives,
                  QWidget *parent = nullptr);
    ~DiskUsageForm() override;

    bool mayLeave() override;

    bool isScanning() const { return m_scan || m_folderScan; }
    bool isClearingRam() const { return m_isClearing; }
    // The models of the result; empty if there is none.
    const FolderModel &folderModel() const { return *m_folders; }
    const BiggestFilesModel &biggestFilesModel() const { return *m_biggestFiles; }
    const DataFilesModel &dataFilesModel() const { return *m_dataFiles; }

public slots:
    // Scans a folder in any spelling, and adds it to the recent ones. Does nothing while a job is running.
    void scan(const QString &folder);

    void handleResults();
    void onClearRamFinish();

private:
    void buildPages();
    void connectPages();

    void startScanOf(const QString &root);
    ScanJob makeJob(const QString &root) const;
    void showResults(std::shared_ptr<diskusage::ScanResult> result);
    void scanFolderAgain(const QModelIndex &folder);
    void handleFolderResults(DiskUsageFolderScanThread &scan);
    void scanAllAgain();
    void startClearing();
    void showStartPage(const QString &notice = {});
    void showOptions();

    EnumeratorFactory m_enumerators;
    // The models outlive the threads that fill and free them.
    std::unique_ptr<FolderModel> m_folders;
    std::unique_ptr<BiggestFilesModel> m_biggestFiles;
    std::unique_ptr<DataFilesModel> m_dataFiles;

    DiskUsageStartForm *m_start;
    DiskUsageResultsForm *m_results;
    DiskUsageClearRamForm *m_clearing;
    DiskUsageOptionsForm *m_options;

    QString m_nextRoot;                  // scanned once the models have been freed
    QString m_resultNotice;              // shown with the result of the running scan
    core::FileTypeTable m_scanFileTypes; // used for the result
    QPersistentModelIndex m_folderIndex; // being rescanned
    // The running job; owned by the host.
    DiskUsageWorkerThread *m_scan = nullptr;
    DiskUsageFolderScanThread *m_folderScan = nullptr;
    bool m_isClearing = false;
};
