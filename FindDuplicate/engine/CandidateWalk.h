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

// Progress of a running scan, called on the scanning thread for every single event.
class ScanListener
{
public:
    virtual ~ScanListener() = default;
    virtual void totalSubFolders(int total) = 0;         // once, first: direct subfolders of the root + 1
    virtual void folderEntered() = 0;                    // each direct subfolder of the root, readable or not
    virtual void pathChanged(const QString &folder) = 0; // each file, even if it is not compared
    virtual void itemSeen(int itemsSeen) = 0;            // each file and folder
};

// Decides which files of a folder tree are compared.
struct WalkRules {
    CategorySelection categories;
    bool skipDotFiles = false; // skip files whose name begins with "."; folders are always walked
    qint32 minSize = 0;        // in bytes; smaller files are skipped, a negative value skips none
    int readAheadThreads = 0;  // core::WalkOptions
};

// Receives each file of the selected category with that index, in walk order.
using CandidateHandler = std::function<void(int category, FileRecord file)>;

struct WalkOutcome {
    int itemsSeen = 0;
    int foldersUnread = 0; // not listed, or only in part; the root counts too
};

// Walks the tree below `root` (a folder in any spelling) on the calling thread until the end or until
// cancelled. Skips unreadable folders.
WalkOutcome walkCandidates(const QString &root, const WalkRules &rules, core::DirectoryEnumerator &enumerator,
                           ScanListener &listener, const CandidateHandler &handle,
                           const core::CancelFlag &cancel);

} // namespace duplicates
