// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GuardedRemoval.h"

#include "platform/FileProbe.h"
#include "platform/HeldFile.h"
#include "platform/ProtectedPlaces.h"
#include "platform/RecycleBin.h"

namespace platform
{

namespace
{

// Obstacles that can be detected without opening the item.
std::optional<Guarded> unopenedObstacle(const ShownItem &item)
{
    // The recycle bin would move a link's target.
    if (item.kind == ItemKind::Link || !RecycleBin::takesPath(item.path))
        return Guarded::Refused;
    const std::optional<quint32> attributes = fileProbe().listedAttributes(item.path);
    if (!attributes)
        return Guarded::Vanished;
    if (core::isPlaceholder(*attributes)) // not fully on this disk, by any of the attributes
        return Guarded::InCloud;
    return std::nullopt;
}

std::optional<Guarded> obstacle(const ShownItem &item, const HeldFile &held)
{
    const std::optional<core::FileFacts> facts = held.facts();
    // It exists, but cannot be opened even without access rights: a dangling link, a device, a lost share.
    if (!facts)
        return Guarded::Refused;
    const bool isFolder = (facts->attributes & core::AttributeDirectory) != 0;
    if (isFolder != (item.kind == ItemKind::Folder))
        return Guarded::Refused;
    // Checked before the comparison: behind a link, the facts are those of its target.
    if (!isInside(item.root, item.path, held))
        return Guarded::ThroughLink;
    if (isFolder && protectionOf(held.finalPath(), protectedPlaces()) == Protection::Holds)
        return Guarded::Protected;
    const bool same =
        (isFolder || (facts->size == item.size && facts->lastWriteTime == item.lastWriteTime)) &&
        (!item.identity || facts->identity == *item.identity);
    return same ? std::nullopt : std::optional(Guarded::Changed);
}

Guarded moveHeldItem(const ShownItem &item)
{
    // The handle stays open until the end, so that no folder on the path can be replaced. The item itself
    // still can be: a handle that prevents that would also prevent the shell from moving it.
    const HeldFile held(item.path);
    if (const std::optional<Guarded> found = obstacle(item, held))
        return *found;
    const auto accept =
        item.kind == ItemKind::Folder ? RecycleBin::Accept::FilesAndFolders : RecycleBin::Accept::FilesOnly;
    switch (recycleBin().moveToTrash(item.path, accept)) {
    case RecycleBin::Outcome::Moved:
        return Guarded::Done;
    case RecycleBin::Outcome::Refused:
        return Guarded::Refused;
    case RecycleBin::Outcome::Failed:
        break;
    }
    return Guarded::Failed;
}

} // namespace

std::optional<Guarded> removalObstacle(const ShownItem &item)
{
    if (const std::optional<Guarded> found = unopenedObstacle(item))
        return found;
    return obstacle(item, HeldFile(item.path));
}

Guarded moveShownItem(const ShownItem &item)
{
    if (const std::optional<Guarded> found = unopenedObstacle(item))
        return *found;
    const Guarded result = moveHeldItem(item);
    // Checked after the handle was closed: until then a deleted file may keep its name.
    const bool gone = result == Guarded::Failed && !fileProbe().listedAttributes(item.path);
    return gone ? Guarded::Untraced : result;
}

} // namespace platform
