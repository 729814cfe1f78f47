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

// The duplicate scan: finds files of one category with equal size and last-write time. No file is opened;
// only folders are listed. Portable; run by the module's thread.
namespace duplicates
{

struct ScanOptions {
    CategorySelection categories;
    // In bytes, although the box is labelled "KB", and always in effect: the check box beside it is stored
    // and shown but has no effect. Both are kept deliberately. Negative values skip nothing.
    qint32 smallFileSize = 20;
    int readAheadThreads = 0;
};

struct ScanResult {
    std::vector<DuplicateGroup> groups; // in report order, see combinedGroups()
    std::size_t filesCompared = 0;
    int itemsSeen = 0;
    int foldersUnread = 0; // WalkOutcome
    bool cancelled = false;
};

// Scans until the end or until cancelled; then the groups cover the files found so far. If the root is
// missing or unreadable, the result is empty.
ScanResult findDuplicates(const QString &root, const ScanOptions &options,
                          core::DirectoryEnumerator &enumerator, ScanListener &listener,
                          const core::CancelFlag &cancel);

} // namespace duplicates
