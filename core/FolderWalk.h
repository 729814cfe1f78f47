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

// Callbacks of a walk. All are called on the thread that called walkFolders(), in the order of a plain
// depth-first recursion over the entries as the file system returned them: a subfolder is walked completely
// between the files before and after it.
class WalkVisitor
{
public:
    virtual ~WalkVisitor() = default;

    // Called once, before everything else, with the number of entries of the root that have the directory
    // attribute. 0 if the root cannot be listed, or if the walk was cancelled before it began; then nothing
    // else is called.
    virtual void rootCounted(int directSubfolders) = 0;

    // Called for every entry of every folder, before any decision about it.
    virtual void entryMet() = 0;

    // Called for a subfolder; return false to skip it, then neither enterFolder nor leaveFolder is called for
    // it. After true both are called in any case. `path` is its full path.
    virtual bool acceptFolder(const QString &path, const DirectoryEntry &entry) = 0;

    enum class FolderState {
        Listed,       // its entries follow, unless the walk is being cancelled
        Unreadable,   // could not be listed; leaveFolder follows at once
        Cycle,        // a link to one of its own ancestors, not followed; leaveFolder follows at once. Also a
                      // link of unknown target that is reached through another one
        ListedInPart, // as Listed, but the listing was interrupted: there may be more entries
    };

    // Called at the start of a folder; depth 0 is the root, `name` the last component (for the root the whole
    // path). `path` is a buffer that the walk modifies: make a deep copy to keep it.
    virtual void enterFolder(const QString &path, QStringView name, int depth, FolderState state) = 0;
    virtual void file(const QString &folder, const DirectoryEntry &entry) = 0;
    // Called at the end of a folder, even during a cancel.
    virtual void leaveFolder() = 0;
};

struct WalkOptions {
    // Number of threads that list folders ahead of the walk (limited to ReadAhead::maxThreads), with no
    // effect on order or result; 0 lists each folder when the walk reaches it. `readAheadEntries` limits the
    // entries held in memory.
    int readAheadThreads = 0;
    std::size_t readAheadEntries = 200'000;
    // If set: folders for which it returns false are not listed ahead. Called on several threads at once.
    // Used for folders that acceptFolder() will reject, so that these are never accessed.
    std::function<bool(const QString &path)> mayListAhead;
    // Folders above the root that also count as ancestors for link cycles, innermost first, in any spelling
    // that walkRoot() accepts. For a walk that repeats a part of a larger one: the folders that enclosed it
    // there.
    QStringList ancestors;
};

// "C:\" -> "C:", "C:\x\" -> "C:\x", "C:/x" -> "C:\x": the form to which "\" and a name can be appended.
QString walkRoot(const QString &chosen);

// Walks `root` (any spelling that walkRoot() accepts) until the end or until cancelled. Does not recurse on
// the stack. Links are followed like folders, except a link to one of its own ancestors; folders above the
// root count as ancestors only if the options name them. A link whose target has no identity is followed
// unless it is reached through another such link.
void walkFolders(const QString &root, DirectoryEnumerator &enumerator, WalkVisitor &visitor,
                 const CancelFlag &cancel, const WalkOptions &options = {});

} // namespace core
