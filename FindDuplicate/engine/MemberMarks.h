// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/DirectoryEnumerator.h"

#include <optional>
#include <vector>

namespace duplicates
{

// The current state of a group member on disk.
struct MemberState {
    bool exists = false;
    // nullopt if the file system does not provide it.
    std::optional<core::FileIdentity> identity;
    // Whether it counts as a remaining copy when another member is removed: its identity is certain, and it
    // is the scanned file in the scanned folder.
    bool isCopy = true;
    // A number per distinct content: members with different contents are no copies of each other. The same
    // for all members before a comparison.
    int content = 0;
};

// What the user should know about a member before removing it.
struct MemberMark {
    bool exists = false;
    // No other member is certain to be a different file with the same content: removing this one may remove
    // the only copy. Several members can have this mark if they are one file under several names.
    bool lastCopy = false;
    // The first member that is the same file by another path (a link, a short name, another case); -1 if
    // there is none. Removing one of the two either frees nothing or removes both.
    int sameFileAs = -1;

    bool operator==(const MemberMark &) const = default;
};

// One mark per member, in member order. A member of unknown identity never counts as another copy.
std::vector<MemberMark> markMembers(const std::vector<MemberState> &members);

} // namespace duplicates
