// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageThread.h"

#include "imaging/DecoderPool.h"
#include "imaging/ThumbnailFile.h"

#include <utility>
#include <vector>

FindDuplicateImageThread::FindDuplicateImageThread(ImageScanJob job) : m_job(std::move(job))
{
    connect(this, &WorkerThread::done, this, &FindDuplicateImageThread::scanFinish);
}

FindDuplicateImageThread::~FindDuplicateImageThread() = default;

void FindDuplicateImageThread::work()
{
    const lookalikes::Examine examine =
        [this](const QString &path,
               const imaging::BeforeDecode &beforeDecode) -> std::optional<lookalikes::ExaminedImage> {
        auto examination = m_job.decoders->examine(path, beforeDecode, cancelFlag());
        if (!examination)
            return std::nullopt;
        return lookalikes::examinedImage(std::move(*examination));
    };
    m_result = lookalikes::findLookalikes(m_job.root, m_job.options, *m_job.enumerator, examine,
                                          *m_job.thumbnails, *this, cancelFlag());
    std::vector<qint64> kept;
    for (const lookalikes::ImageGroup &group : m_result.groups)
        for (const lookalikes::ImageRecord &image : group.members)
            kept.push_back(image.thumbnail);
    m_job.thumbnails->close(std::move(kept));
}

void FindDuplicateImageThread::abandon()
{
    m_result = {};
    m_job.thumbnails->close({});
}
