// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/Scan.h"
#include "core/WorkerThread.h"

#include <memory>

namespace imaging
{
class DecoderPool;
}
namespace imaging
{
class ThumbnailFile;
}

// The parameters of a scan. Decoder pool and thumbnails belong to the form.
struct ImageScanJob {
    QString root;
    lookalikes::ScanOptions options;
    std::unique_ptr<core::DirectoryEnumerator> enumerator;
    std::shared_ptr<imaging::DecoderPool> decoders;
    std::shared_ptr<imaging::ThumbnailFile> thumbnails;
};

// Scans a folder for similar images. Signals are emitted on the worker thread, updateTotalItemScan() for
// every file system entry: connect through a core::ProgressRelay. scanFinish() is emitted once, however the
// scan ends.
class FindDuplicateImageThread : public core::WorkerThread, private duplicates::ScanListener
{
    Q_OBJECT

public:
    explicit FindDuplicateImageThread(ImageScanJob job);
    ~FindDuplicateImageThread() override;

    // Valid after scanFinish().
    lookalikes::ScanResult takeResult() { return std::move(m_result); }

signals:
    void scanFinish();
    void updateScanProgress();
    void updatePath(QString path);
    void updateTotalSubFolder(int total);
    void updateTotalItemScan(int totalItem);

protected:
    void work() override;
    void abandon() override;
    void interrupt() override { m_job.enumerator->interrupt(); }

private:
    void totalSubFolders(int total) override { emit updateTotalSubFolder(total); }
    void folderEntered() override { emit updateScanProgress(); }
    void pathChanged(const QString &folder) override { emit updatePath(folder); }
    void itemSeen(int itemsSeen) override { emit updateTotalItemScan(itemsSeen); }

    ImageScanJob m_job;
    lookalikes::ScanResult m_result;
};
