// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/CandidateWalk.h"
#include "FindDuplicate/engine/Categories.h"
#include "FindDuplicate/engine/Grouping.h"
#include "core/CancelFlag.h"
#include "core/DirectoryEnumerator.h"

#include <QString>

#include <cstddef>
#include <vector>

// The duplicate scan: files of one category that share size and last-write time. Nothing is opened; a scan
// costs the listing of each folder. Portable; the module's thread runs it.
namespace duplicates
{

struct ScanOptions {
    CategorySelection categories;
    // Bytes, although the box that sets it is labelled "KB", and always in force: the check box beside it is
    // stored and shown, but plays no part. Both are kept on purpose. Negative values leave nothing out.
    qint32 smallFileSize = 20;
    int readAheadThreads = 0;
};

struct ScanResult {
    std::vector<DuplicateGroup> groups; // in the order of the report, see combinedGroups()
    std::size_t filesCompared = 0;
    int itemsSeen = 0;
    int foldersUnread = 0; // WalkOutcome
    bool cancelled = false;
};

// Scans until the end or until cancelled; then the groups are those of the files met so far. The root may be
// missing or unreadable: the result is then empty.
ScanResult findDuplicates(const QString &root, const ScanOptions &options,
                          core::DirectoryEnumerator &enumerator, ScanListener &listener,
                          const core::CancelFlag &cancel);

} // namespace duplicates
