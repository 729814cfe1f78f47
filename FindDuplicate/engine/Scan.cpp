// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/Scan.h"

#include <utility>

namespace duplicates
{

ScanResult findDuplicates(const QString &root, const ScanOptions &options,
                          core::DirectoryEnumerator &enumerator, ScanListener &listener,
                          const core::CancelFlag &cancel)
{
    ScanResult result;
    std::vector<DuplicateGrouper> groupers(options.categories.size());
    const auto compare = [&](int category, FileRecord file) {
        ++result.filesCompared;
        groupers[static_cast<std::size_t>(category)].add(std::move(file));
    };
    const WalkRules rules{options.categories, true, options.smallFileSize, options.readAheadThreads};
    const WalkOutcome walked = walkCandidates(root, rules, enumerator, listener, compare, cancel);
    result.itemsSeen = walked.itemsSeen;
    result.foldersUnread = walked.foldersUnread;
    result.cancelled = cancel.isSet();

    std::vector<std::vector<DuplicateGroup>> byCategory;
    byCategory.reserve(groupers.size());
    for (DuplicateGrouper &grouper : groupers)
        byCategory.push_back(grouper.takeGroups());
    result.groups = combinedGroups(std::move(byCategory));
    return result;
}

} // namespace duplicates
