// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GuardRules.h"

namespace platform
{

Guarded judge(const ListedItem &listed, const OpenedFacts &opened, GuardedFolder::Access access)
{
    const bool same = listed.kind != ItemKind::File ||
                      (opened.size == listed.size && opened.lastWriteTime == listed.lastWriteTime);
    // An item listed with a file id or identity that has another one now is a different item.
    if (opened.kind != listed.kind || !same || (listed.number && opened.number != listed.number) ||
        (listed.identity && opened.identity != listed.identity))
        return Guarded::Changed;
    if (access == GuardedFolder::Access::Query)
        return Guarded::Done;
    if (core::isPlaceholder(opened.attributes))
        return Guarded::InCloud;
    const bool readOnly =
        opened.kind != ItemKind::Folder && (opened.attributes & core::AttributeReadOnly) != 0;
    return readOnly ? Guarded::ReadOnly : Guarded::Done;
}

} // namespace platform
