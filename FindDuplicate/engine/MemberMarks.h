// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/DirectoryEnumerator.h"

#include <optional>
#include <vector>

namespace duplicates
{

// What the disk says now about one member of a group.
struct MemberState {
    bool exists = false;
    // Empty when the file system does not tell.
    std::optional<core::FileIdentity> identity;
    // May count as a copy that is left when another member goes: its identity is certain, and it is the file
    // that was scanned, in the folder that was scanned.
    bool isCopy = true;
    // Members of different contents are no copies of each other: one number for each content, the same for
    // all as long as they have not been compared.
    int content = 0;
};

// What the user should know about a member before removing it.
struct MemberMark {
    bool exists = false;
    // No other member is certain to be another file of that content: removing this one may remove the only
    // copy. Several members can bear the mark, when they are one file under several names.
    bool lastCopy = false;
    // The first member that is the same file as this one by another path (a link, a short name, other case),
    // -1 when there is none. Removing one of the two frees nothing, or takes both away.
    int sameFileAs = -1;

    bool operator==(const MemberMark &) const = default;
};

// One mark a member, in the order of the members. A member of unknown identity is never taken for a further
// copy.
std::vector<MemberMark> markMembers(const std::vector<MemberState> &members);

} // namespace duplicates
