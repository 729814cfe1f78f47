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

// The look-alike scan: pictures whose colours, reduced to 40 by 40, differ in a few places at most, whatever
// their format, size or name. Portable; the module's thread runs it.
namespace lookalikes
{

// Decodes a file and keeps what a comparison needs, here or in another process. Empty for what is not
// compared. Called on several threads at once. What it throws counts as a failure.
using Examine =
    std::function<std::optional<ExaminedImage>(const QString &path, const imaging::BeforeDecode &)>;

// In this process.
Examine examineWith(imaging::Decode decode);

struct ScanOptions {
    int readAheadThreads = 0; // core::WalkOptions
    // Pictures are decoded ahead of the comparison on this many threads, without any influence on groups,
    // numbers or progress; 0 decodes each when the walk reaches it.
    int decodeThreads = 0;
    // Decoded pictures in memory at a time. One picture is always allowed, and takes up to
    // imaging::imageAllocationLimit.
    qint64 decodedBytes = qint64(512) << 20;
};

struct ScanResult {
    std::vector<ImageGroup> groups; // in the order of the report, see sortForReport()
    std::size_t imagesCompared = 0;
    std::size_t placeholders = 0; // pictures whose content lies in a cloud store: not opened, so not compared
    int itemsSeen = 0;
    int foldersUnread = 0; // duplicates::WalkOutcome
    bool cancelled = false;
};

// Scans until the end or until cancelled; then the groups are those of some of the files met so far. Files
// that cannot be decoded, and pictures with a side below 40 pixels, are dropped; core::isPlaceholder() files
// are counted and not opened, since a scan must not download a cloud store. The progress is that of the
// walk, which is ahead of the comparison by PreparationQueue::filesPerThread files a thread at most.
//
// Memory: options.decodedBytes for the pictures themselves, and up to four times as much again for what their
// decoders need beside them; 4.8 KB for every picture that is alike to none before it; and the records. A
// damaged or hostile file may take more than it states: what bounds that is the owner of `examine`.
ScanResult findLookalikes(const QString &root, const ScanOptions &options,
                          core::DirectoryEnumerator &enumerator, const Examine &examine,
                          imaging::ThumbnailSink &thumbnails, duplicates::ScanListener &listener,
                          const core::CancelFlag &cancel);
ScanResult findLookalikes(const QString &root, const ScanOptions &options,
                          core::DirectoryEnumerator &enumerator, const imaging::Decode &decode,
                          imaging::ThumbnailSink &thumbnails, duplicates::ScanListener &listener,
                          const core::CancelFlag &cancel);

} // namespace lookalikes
