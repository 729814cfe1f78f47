// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform
{

// Moves items to the recycle bin, and never erases: an item that the bin does not accept stays where it is.
class RecycleBin
{
public:
    enum class Accept { FilesOnly, FilesAndFolders };
    enum class Outcome {
        Moved,
        Refused, // not attempted: see moveToTrash()
        Failed   // Windows failed (no bin on this drive, file in use, path too long)
    };

    virtual ~RecycleBin() = default;

    // Whether a path can be passed to the bin at all, judged by its text alone: see moveToTrash().
    static bool takesPath(const QString &path);

    // Moves one item, given by full path. Refused without an attempt: relative paths, drive roots, items that
    // do not exist, folders unless accepted, paths that end in a link, and names that the shell would
    // interpret as another item (a trailing dot or space, a device name): the file system functions can
    // handle those, but the recycle bin only takes shell names. May take too long for the interface thread;
    // any thread.
    Outcome moveToTrash(const QString &path, Accept accept = Accept::FilesOnly);

protected:
    virtual bool move(const QString &path) = 0;
};

RecycleBin &recycleBin();
// For tests; null restores the real implementation. The object is not owned.
void setRecycleBin(RecycleBin *replacement);

} // namespace platform
