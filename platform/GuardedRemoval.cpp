// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GuardedRemoval.h"

#include "platform/Paths.h"
#include "platform/RecycleBin.h"

namespace platform
{

std::optional<Removal> removalObstacle(const ShownFile &file)
{
    if (file.path.isEmpty() || isDriveRoot(file.path))
        return Removal::Refused;
    if (!fileExists(file.path))
        return Removal::Vanished;
    const std::optional<FileFacts> facts = fileFacts(file.path);
    // It is there and cannot be opened even without any access: a link to nothing, a device, a lost share.
    if (!facts)
        return Removal::Refused;
    if ((facts->attributes & core::AttributeDirectory) != 0)
        return Removal::Refused;
    // Before the comparison: behind a link the facts are those of the file that it leads to.
    if (!isInside(file.root, file.path))
        return Removal::ThroughLink;
    const bool same = facts->size == file.size && facts->lastWriteTime == file.lastWriteTime &&
                      (!file.identity || facts->identity == *file.identity);
    return same ? std::nullopt : std::optional(Removal::Changed);
}

Removal moveShownFile(const ShownFile &file)
{
    if (const std::optional<Removal> obstacle = removalObstacle(file))
        return *obstacle;
    switch (recycleBin().moveToTrash(file.path)) {
    case RecycleBin::Outcome::Moved:
        return Removal::Moved;
    case RecycleBin::Outcome::Refused:
        return Removal::Refused;
    case RecycleBin::Outcome::Failed:
        break;
    }
    return Removal::Failed;
}

} // namespace platform
