// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/Categories.h"
#include "FindDuplicate/engine/FileRecord.h"
#include "core/CancelFlag.h"
#include "core/DirectoryEnumerator.h"

#include <QString>

#include <functional>

namespace duplicates
{

// Progress of a running scan, called on the scanning thread: once per event, without any thinning out.
class ScanListener
{
public:
    virtual ~ScanListener() = default;
    virtual void totalSubFolders(int total) = 0;         // once, first: direct subfolders of the root + 1
    virtual void folderEntered() = 0;                    // each direct subfolder of the root, readable or not
    virtual void pathChanged(const QString &folder) = 0; // each file, also one that is not compared
    virtual void itemSeen(int itemsSeen) = 0;            // each file and folder
};

// Which files of a folder tree are compared.
struct WalkRules {
    CategorySelection categories;
    bool skipDotFiles = false; // names that begin with "."; folders are walked whatever their names are
    qint32 smallestSize = 0;   // in bytes; smaller files are not compared, a negative value leaves none out
    int readAheadThreads = 0;  // core::WalkOptions
};

// Takes a file of the selected category with that index, in walk order.
using CandidateHandler = std::function<void(int category, FileRecord file)>;

struct WalkOutcome {
    int itemsSeen = 0;
    int foldersUnread = 0; // that could not be listed, or in part only; the root is one of them
};

// Walks the tree below `root` (a chosen folder in any spelling) on the calling thread until the end or until
// cancelled. Unreadable folders are passed over.
WalkOutcome walkCandidates(const QString &root, const WalkRules &rules, core::DirectoryEnumerator &enumerator,
                           ScanListener &listener, const CandidateHandler &handle,
                           const core::CancelFlag &cancel);

} // namespace duplicates
