// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/CandidateWalk.h"
#include "FindDuplicateImage/engine/ImageRecord.h"
#include "FindDuplicateImage/engine/Reduction.h"
#include "core/CancelFlag.h"
#include "core/DirectoryEnumerator.h"
#include "imaging/engine/Examination.h"
#include "imaging/engine/ThumbnailSink.h"

#include <QImage>
#include <QString>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

// The look-alike scan: finds images whose colours, scaled to 40 by 40, differ in a few positions at most,
// whatever their format, size or name. Portable; run by the module's thread.
namespace lookalikes
{

// Decodes a file and returns what a comparison needs, in this or another process. nullopt for files that are
// not compared. Called on several threads at once. Exceptions count as a failure.
using Examine =
    std::function<std::optional<ExaminedImage>(const QString &path, const imaging::BeforeDecode &)>;

// Decodes in this process.
Examine examineWith(imaging::Decode decode);

struct ScanOptions {
    int readAheadThreads = 0; // core::WalkOptions
    // Number of threads that decode images ahead of the comparison, with no effect on groups, numbers or
    // progress; 0 decodes each image when the walk reaches it.
    int decodeThreads = 0;
    // Limit for decoded images in memory. A single image is always allowed, and takes up to
    // imaging::imageAllocationLimit.
    qint64 decodedBytes = qint64(512) << 20;
};

struct ScanResult {
    std::vector<ImageGroup> groups; // in report order, see sortForReport()
    std::size_t imagesCompared = 0;
    std::size_t placeholders = 0; // images whose content is in the cloud: not opened, so not compared
    int itemsSeen = 0;
    int foldersUnread = 0; // duplicates::WalkOutcome
    bool cancelled = false;
};

// Scans until the end or until cancelled; then the groups cover only some of the files. Files that cannot be
// decoded, and images with a side below 40 pixels, are skipped; core::isPlaceholder() files are counted but
// not opened, since a scan must not download a cloud store. Progress is that of the walk, which is ahead of
// the comparison by at most PreparationQueue::filesPerThread files per thread.
// Memory: options.decodedBytes for decoded images, and up to four times as much for the decoders' working
// memory; 4.8 KB per image that is similar to none before it; and the records. A malicious file may use more
// than it declares: limiting that is up to the owner of `examine`.
ScanResult findLookalikes(const QString &root, const ScanOptions &options,
                          core::DirectoryEnumerator &enumerator, const Examine &examine,
                          imaging::ThumbnailSink &thumbnails, duplicates::ScanListener &listener,
                          const core::CancelFlag &cancel);
ScanResult findLookalikes(const QString &root, const ScanOptions &options,
                          core::DirectoryEnumerator &enumerator, const imaging::Decode &decode,
                          imaging::ThumbnailSink &thumbnails, duplicates::ScanListener &listener,
                          const core::CancelFlag &cancel);

} // namespace lookalikes
