// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/Scan.h"

#include "FindDuplicateImage/engine/PreparationQueue.h"
#include "FindDuplicateImage/engine/SimilarityGrouper.h"
#include "core/FileTypes.h"
#include "imaging/engine/MemoryBudget.h"

#include <QDebug>

#include <algorithm>
#include <utility>

namespace lookalikes
{

namespace
{

// Only the built-in raster image types: the user's edits elsewhere do not apply here.
duplicates::CategorySelection rasterImages()
{
    const core::FileTypeTable &table = core::defaultFileTypes();
    const auto raster =
        std::find_if(table.cbegin(), table.cend(), [](const core::FileTypeCategory &category) {
            return category.name == QLatin1String("Raster Image Files");
        });
    Q_ASSERT(raster != table.cend());
    return {{raster->name, raster->extensions, true}};
}

class ImageScan
{
public:
    ImageScan(const ScanOptions &options, const Examine &examine, imaging::ThumbnailSink &thumbnails,
              const core::CancelFlag &cancel)
        : m_examine(examine),
          m_thumbnails(thumbnails),
          m_cancel(cancel),
          m_budget(options.decodedBytes),
          m_queue(options.decodeThreads,
                  [this](duplicates::FileRecord file) { return prepare(std::move(file)); })
    {
    }

    void add(duplicates::FileRecord file);
    void finish(ScanResult &result);

private:
    PreparedImage prepare(duplicates::FileRecord file);
    void fingerprint(PreparedImage &prepared);
    void groupFirst();

    const Examine &m_examine;
    imaging::ThumbnailSink &m_thumbnails;
    const core::CancelFlag &m_cancel;
    imaging::MemoryBudget m_budget;
    SimilarityGrouper m_grouper;
    std::size_t m_compared = 0;
    std::size_t m_placeholders = 0;
    PreparationQueue m_queue; // last member, so that its threads end first
};

void ImageScan::add(duplicates::FileRecord file)
{
    if (file.placeholder) {
        ++m_placeholders;
        qDebug() << "The content is not on this computer:" << file.fullPath();
        return;
    }
    while (m_queue.isFull() || m_queue.firstIsReady())
        groupFirst();
    m_queue.add(std::move(file));
}

void ImageScan::finish(ScanResult &result)
{
    while (!m_queue.isEmpty() && !m_cancel.isSet())
        groupFirst();
    result.imagesCompared = m_compared;
    result.placeholders = m_placeholders;
    result.groups = m_grouper.takeGroups();
    sortForReport(result.groups);
}

void ImageScan::groupFirst()
{
    PreparedImage first = m_queue.takeFirst();
    if (!first.fingerprint)
        return;
    ++m_compared;
    m_grouper.add(std::move(first.image), *first.fingerprint);
}

PreparedImage ImageScan::prepare(duplicates::FileRecord file)
{
    PreparedImage prepared;
    static_cast<duplicates::FileRecord &>(prepared.image) = std::move(file);
    if (m_cancel.isSet())
        return prepared;
    try {
        fingerprint(prepared);
    } catch (...) {
        // Out of memory, most likely: drop this image and continue.
        prepared.fingerprint.reset();
    }
    return prepared;
}

void ImageScan::fingerprint(PreparedImage &prepared)
{
    imaging::MemoryBudget::Share memory(m_budget);
    const std::optional<ExaminedImage> examined =
        m_examine(prepared.image.fullPath(), [&memory](qint64 bytes) { memory.take(bytes); });
    if (!examined)
        return;
    prepared.image.width = examined->width;
    prepared.image.height = examined->height;
    prepared.image.format = examined->format;
    prepared.image.thumbnail = m_thumbnails.store(examined->thumbnail);
    prepared.fingerprint = examined->fingerprint;
}

} // namespace

Examine examineWith(imaging::Decode decode)
{
    return
        [decode = std::move(decode)](
            const QString &path, const imaging::BeforeDecode &beforeDecode) -> std::optional<ExaminedImage> {
            std::optional<imaging::LoadedImage> loaded = decode(path, beforeDecode);
            if (!loaded)
                return std::nullopt;
            std::optional<imaging::Examination> examination = imaging::examine(std::move(*loaded));
            return examination ? std::optional(examinedImage(std::move(*examination))) : std::nullopt;
        };
}

ScanResult findLookalikes(const QString &root, const ScanOptions &options,
                          core::DirectoryEnumerator &enumerator, const imaging::Decode &decode,
                          imaging::ThumbnailSink &thumbnails, duplicates::ScanListener &listener,
                          const core::CancelFlag &cancel)
{
    return findLookalikes(root, options, enumerator, examineWith(decode), thumbnails, listener, cancel);
}

ScanResult findLookalikes(const QString &root, const ScanOptions &options,
                          core::DirectoryEnumerator &enumerator, const Examine &examine,
                          imaging::ThumbnailSink &thumbnails, duplicates::ScanListener &listener,
                          const core::CancelFlag &cancel)
{
    ScanResult result;
    ImageScan scan(options, examine, thumbnails, cancel);
    const duplicates::WalkRules rules{rasterImages(), false, 0, options.readAheadThreads};
    const duplicates::WalkOutcome walked = duplicates::walkCandidates(
        root, rules, enumerator, listener,
        [&scan](int, duplicates::FileRecord file) { scan.add(std::move(file)); }, cancel);
    result.itemsSeen = walked.itemsSeen;
    result.foldersUnread = walked.foldersUnread;
    scan.finish(result);
    result.cancelled = cancel.isSet();
    return result;
}

} // namespace lookalikes
