// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"
#include "core/DirectoryEnumerator.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <cstddef>
#include <functional>

namespace core
{

// What a module does with a walk. All functions are called on the thread that called walkFolders(), in the
// order of a plain depth-first recursion over the entries as the file system returned them: a subfolder is
// walked completely at the moment when it is met, between the files before and after it.
class WalkVisitor
{
public:
    virtual ~WalkVisitor() = default;

    // Once, before everything else: the number of entries of the root with the directory attribute (0 when
    // the root cannot be listed, or when the walk was cancelled before it began; then nothing else follows).
    virtual void rootCounted(int directSubfolders) = 0;

    // Every entry of every folder, before anything is decided about it.
    virtual void entryMet() = 0;

    // A subfolder was met; false leaves it out: neither enterFolder nor leaveFolder follow. After true both
    // follow in any case. `path` is its full path.
    virtual bool acceptFolder(const QString &path, const DirectoryEntry &entry) = 0;

    enum class FolderState {
        Listed,       // its entries follow, unless the walk is being cancelled
        Unreadable,   // it could not be listed; leaveFolder follows at once
        Cycle,        // a link to one of its own ancestors, not entered; leaveFolder follows at once
        ListedInPart, // as Listed, but listing it broke off: there may be more entries
    };

    // A folder begins; depth 0 is the root, `name` its last component (for the root: the whole path). The
    // path is a buffer that the walk goes on writing to: a copy that is kept costs one allocation.
    virtual void enterFolder(const QString &path, QStringView name, int depth, FolderState state) = 0;
    virtual void file(const QString &folder, const DirectoryEntry &entry) = 0;
    // The folder is complete, also when the walk is being cancelled.
    virtual void leaveFolder() = 0;
};

struct WalkOptions {
    // Folders are listed ahead of the walk on this many threads (at most ReadAhead::maxThreads), without any
    // influence on order or result; 0 lists every folder when the walk reaches it. Memory is bounded by
    // `readAheadEntries` entries held ready.
    int readAheadThreads = 0;
    std::size_t readAheadEntries = 200'000;
    // When set: a folder for which it is false is not listed before the walk enters it. Called on any thread,
    // on several at once; for folders that acceptFolder() will refuse, so that these are never touched.
    std::function<bool(const QString &path)> mayListAhead;
    // The folders above the root that count as ancestors of its links too, innermost first, in any spelling
    // that walkRoot() takes: of a walk that repeats a part of a larger one, the folders that this one was in.
    QStringList ancestors;
};

// "C:\" -> "C:", "C:\x\" -> "C:\x", "C:/x" -> "C:\x": the form in which a folder and "\" + a name make a
// path.
QString walkRoot(const QString &chosen);

// Walks `root` (any spelling that walkRoot() takes) until the end or until cancelled. Uses no recursion on
// the machine's stack. Links are entered like folders, except one that leads to an ancestor of itself; what
// stands above the root is no ancestor, unless the options name it.
void walkFolders(const QString &root, DirectoryEnumerator &enumerator, WalkVisitor &visitor,
                 const CancelFlag &cancel, const WalkOptions &options = {});

} // namespace core
