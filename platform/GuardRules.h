// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Guard.h"

namespace platform
{

// The facts of an opened item. Number and identity are needed only if the listed item has them.
struct OpenedFacts {
    ItemKind kind = ItemKind::File;
    quint32 attributes = 0;
    quint64 size = 0;
    quint64 lastWriteTime = 0;
    std::optional<quint64> number = std::nullopt;
    std::optional<core::FileIdentity> identity = std::nullopt;
};

// Whether the opened item is the listed one, and may be accessed in this way. Returns Done if so.
Guarded judge(const ListedItem &listed, const OpenedFacts &opened, GuardedFolder::Access access);

} // namespace platform
