// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/DirectoryEnumerator.h"

#include <QString>

#include <optional>

namespace platform
{

// A file as the user saw it in a list, written down when the list was made. What is moved is this file or
// nothing: a path alone may name another file by the time the user has answered.
struct ShownFile {
    QString root; // the folder that the user chose, in any spelling; the file lies below it
    QString path; // full path
    quint64 size = 0;
    quint64 lastWriteTime = 0; // FILETIME
    // Empty when it was not asked for, or the file system does not tell; then size and time must do.
    std::optional<core::FileIdentity> identity;
};

enum class Removal {
    Moved,
    Changed,     // another size, time or identity than shown: edited or replaced
    Vanished,    // nothing bears the path any more
    ThroughLink, // the path leads through a link, or is one, so that the file lies somewhere else
    InCloud,     // only in a cloud store, from where even looking at it would fetch it
    Refused,     // not a file, a drive root, a path that the recycle bin cannot be given
    Failed       // Windows did not do it (no recycle bin on this drive, file in use)
};

// Disk, any thread. What stands in the way of moving the file; empty when nothing does. Asked before the user
// is, so that no question is put in vain. Touches nothing and fetches nothing from a cloud store.
std::optional<Removal> removalObstacle(const ShownFile &file);

// Disk, any thread. Checks once more, since time has passed with the user's answer, and moves the file to the
// recycle bin. There is no other way of removing it: what the bin does not take stays where it is. From the
// check on until the shell has answered the file is held (see HeldFile).
Removal moveShownFile(const ShownFile &file);

} // namespace platform
