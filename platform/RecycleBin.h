// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform
{

// Moves things to the recycle bin, and never erases: what the bin does not take stays where it is.
class RecycleBin
{
public:
    enum class Accept { FilesOnly, FilesAndFolders };
    enum class Outcome {
        Moved,
        Refused, // not tried: see moveToTrash()
        Failed   // Windows did not do it (no bin on this drive, file in use, path too long)
    };

    virtual ~RecycleBin() = default;

    // Whether a path can be given to the bin at all, by its text alone: see moveToTrash().
    static bool takesPath(const QString &path);

    // One item by its full path. Refused without trying: a path that is not absolute, a drive root, what does
    // not exist, a folder unless accepted, a path that ends in a link, and names that the shell would read as
    // another item's name (a trailing dot or space, a device name). Such a name is safe in the file system
    // calls but the recycle bin has only the shell's. May take longer than an interface may wait; any thread.
    Outcome moveToTrash(const QString &path, Accept accept = Accept::FilesOnly);

protected:
    virtual bool move(const QString &path) = 0;
};

RecycleBin &recycleBin();
// For tests; null puts the real one back. The object is not owned.
void setRecycleBin(RecycleBin *replacement);

} // namespace platform
