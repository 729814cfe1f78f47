// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GuardedRemoval.h"

#include "platform/FileProbe.h"
#include "platform/HeldFile.h"
#include "platform/RecycleBin.h"

namespace platform
{

namespace
{

// What can be told without opening the file.
std::optional<Removal> unopenedObstacle(const ShownFile &file)
{
    if (!RecycleBin::takesPath(file.path))
        return Removal::Refused;
    const std::optional<quint32> attributes = fileProbe().listedAttributes(file.path);
    if (!attributes)
        return Removal::Vanished;
    if ((*attributes & core::AttributeRecallOnOpen) != 0)
        return Removal::InCloud;
    return std::nullopt;
}

std::optional<Removal> obstacle(const ShownFile &file, const HeldFile &held)
{
    const std::optional<core::FileFacts> facts = held.facts();
    // It is there and cannot be opened even without any access: a link to nothing, a device, a lost share.
    if (!facts)
        return Removal::Refused;
    if ((facts->attributes & core::AttributeDirectory) != 0)
        return Removal::Refused;
    // Before the comparison: behind a link the facts are those of the file that it leads to.
    if (!isInside(file.root, file.path, held))
        return Removal::ThroughLink;
    const bool same = facts->size == file.size && facts->lastWriteTime == file.lastWriteTime &&
                      (!file.identity || facts->identity == *file.identity);
    return same ? std::nullopt : std::optional(Removal::Changed);
}

} // namespace

std::optional<Removal> removalObstacle(const ShownFile &file)
{
    if (const std::optional<Removal> found = unopenedObstacle(file))
        return found;
    return obstacle(file, HeldFile(file.path));
}

Removal moveShownFile(const ShownFile &file)
{
    if (const std::optional<Removal> found = unopenedObstacle(file))
        return *found;
    // Held to the end, so that no folder on its path can be exchanged. The file itself still could: keeping
    // it from that would keep the shell from moving it.
    const HeldFile held(file.path);
    if (const std::optional<Removal> found = obstacle(file, held))
        return *found;
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
