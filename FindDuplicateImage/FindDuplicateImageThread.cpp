// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageThread.h"

#include "imaging/DecoderPool.h"
#include "imaging/ThumbnailFile.h"

FindDuplicateImageThread::FindDuplicateImageThread(ImageScanJob job) : m_job(std::move(job)) {}

FindDuplicateImageThread::~FindDuplicateImageThread() = default;

void FindDuplicateImageThread::run()
{
    const lookalikes::Examine examine =
        [this](const QString &path,
               const imaging::BeforeDecode &beforeDecode) -> std::optional<lookalikes::ExaminedImage> {
        auto examination = m_job.decoders->examine(path, beforeDecode, cancelFlag());
        if (!examination)
            return std::nullopt;
        return lookalikes::examinedImage(std::move(*examination));
    };
    try {
        m_result = lookalikes::findLookalikes(m_job.root, m_job.options, *m_job.enumerator, examine,
                                              *m_job.thumbnails, *this, cancelFlag());
    } catch (const std::exception &) { // what is thrown here is a lack of memory
        m_result = {};
        m_error = tr("The scan ran out of memory.");
    }
    m_job.thumbnails->close();
    deliver([this] { emit scanFinish(); });
}
