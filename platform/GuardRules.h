// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Guard.h"

namespace platform
{

// What an opened item tells of itself. Number and identity are needed where the listed item has them.
struct OpenedFacts {
    ItemKind kind = ItemKind::File;
    quint32 attributes = 0;
    quint64 size = 0;
    quint64 lastWriteTime = 0;
    std::optional<quint64> number = std::nullopt;
    std::optional<core::FileIdentity> identity = std::nullopt;
};

// Whether the opened item is the one that was listed, and may be looked at or acted on. Done says so.
Guarded judge(const ListedItem &listed, const OpenedFacts &opened, GuardedFolder::Access access);

} // namespace platform
