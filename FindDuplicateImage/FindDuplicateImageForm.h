// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/FindDuplicateImageThread.h"
#include "core/ScanProgress.h"
#include "widgets/FLWidget.h"

#include <functional>
#include <memory>

namespace imaging
{
class DecoderPool;
}
class FindDuplicateImageNoResultFoundForm;
class FindDuplicateImageResultForm;
class FindDuplicateImageScanInfoForm;
class FindDuplicateImageStartForm;
class QStackedLayout;

// The finder of pictures that look alike. Shows one of its pages at a time and runs one job at a time: a
// scan, the preparation of its report, or the removal of a picture.
class FindDuplicateImageForm : public FLWidget
{
    Q_OBJECT

public:
    // What the form works with; the default is the real thing.
    struct Tools {
        std::function<std::unique_ptr<core::DirectoryEnumerator>()> enumerator; // one for each scan
        std::function<std::shared_ptr<imaging::DecoderPool>()> decoders;        // one for each scan
        QString temporaryFolder;
    };
    static Tools windowsTools();

    explicit FindDuplicateImageForm(QWidget *parent = nullptr);
    FindDuplicateImageForm(Tools tools, QWidget *parent = nullptr);
    ~FindDuplicateImageForm() override;

    bool isBusy() const override;
    // The window is to close, and is closed when what runs has ended.
    void requestStop() override;
    QString busyText() const override;
    bool isScanning() const { return m_scan != nullptr; }

public slots:
    // Scans a folder in any spelling. Does nothing while a job runs.
    void scan(const QString &folder);

    void handleUpdatePath(const QString &path);
    void handleUpdateScanProgress();
    void handleUpdateTotalSubFolder(int total);
    void handleUpdateTotalItemScan(int totalItem);
    void handleScanCancel();
    void onScanFinish();
    void onPrepareReportUpdatePath(QString path);
    void OnResultReady();
    void OnBackToMain();
    void OnNoResult_backToMain();

signals:
    // A page is on show; for whoever watches the form from outside.
    void startPageShown();
    void resultsShown();
    void noResultShown();

private:
    void onRemovalEnded(bool hasNews);
    void buildPages();
    void connectPages();
    void connectScan();
    ImageScanJob makeJob(const QString &root) const;
    void showProgress(const core::ScanProgress &progress);
    void endWithoutResult(const QString &notice = {});
    void showStartPage(const QString &notice = {});

    Tools m_tools;
    QStackedLayout *m_pages;
    FindDuplicateImageStartForm *m_start;
    FindDuplicateImageScanInfoForm *m_scanInfo;
    FindDuplicateImageResultForm *m_results;
    FindDuplicateImageNoResultFoundForm *m_noResult;

    QString m_root; // of the scan that runs or is shown
    bool m_cancelled = false;
    QString m_resultNotice; // to be shown with the result of the scan that runs
    bool m_closeRequested = false;
    int m_stepsShown = 0;
    bool m_totalShown = false;
    core::ProgressRelay m_relay;       // of the scan
    core::ProgressRelay m_reportRelay; // of the report's preparation
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    std::shared_ptr<imaging::ThumbnailFile> m_thumbnails;
    core::WorkerPointer<FindDuplicateImageThread> m_scan;
};
