// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/FindDuplicateImageThread.h"
#include "widgets/ScanForm.h"

#include <functional>
#include <memory>

namespace imaging
{
class DecoderPool;
}
class FindDuplicateImageNoResultFoundForm;
class FindDuplicateImageResultForm;
class FindDuplicateImageStartForm;

// The finder of similar images. Shows one of its pages at a time and runs one job at a time: a scan, the
// preparation of its report, or the removal of an image.
class FindDuplicateImageForm : public ScanForm
{
    Q_OBJECT

public:
    // Factories that tests replace.
    struct Tools {
        std::function<std::unique_ptr<core::DirectoryEnumerator>()> enumerator; // creates one per scan
        std::function<std::shared_ptr<imaging::DecoderPool>()> decoders;        // creates one per scan
        QString temporaryFolder;
    };
    static Tools windowsTools();

    // Deletes what a crashed run left in the temporary folder, on a thread of its own. Returns at once.
    static void clearLeftovers();

    explicit FindDuplicateImageForm(QWidget *parent = nullptr);
    FindDuplicateImageForm(Tools tools, QWidget *parent = nullptr);
    ~FindDuplicateImageForm() override;

    bool isScanning() const { return m_scan != nullptr; }

public slots:
    // Scans a folder in any spelling. Does nothing while a job runs.
    void scan(const QString &folder);

    void onScanFinish();
    void onPrepareReportUpdatePath(QString path);
    void OnResultReady();
    void OnBackToMain();
    void OnNoResult_backToMain();

signals:
    void noResultShown();

private:
    void buildPages();
    void connectPages();
    ImageScanJob makeJob(const QString &root) const;
    void showStartPage(const QString &notice = {});

    Tools m_tools;
    FindDuplicateImageStartForm *m_start;
    FindDuplicateImageResultForm *m_results;
    FindDuplicateImageNoResultFoundForm *m_noResult;

    QString m_resultNotice; // shown with the result of the running scan
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    std::shared_ptr<imaging::ThumbnailFile> m_thumbnails;
    FindDuplicateImageThread *m_scan = nullptr; // owned by the host
};
