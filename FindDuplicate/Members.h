// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/FileRecord.h"
#include "FindDuplicate/engine/MemberMarks.h"
#include "core/CancelFlag.h"
#include "platform/GuardedRemoval.h"

#include <QString>

#include <optional>
#include <vector>

namespace duplicates
{

// What the disk says about one member of a group at the moment when it was asked.
struct MemberFacts {
    MemberMark mark;
    std::optional<core::FileIdentity> identity;
    bool changed = false;     // another size or last-write time than in the scan: no copy any more
    bool throughLink = false; // a link lies between the chosen folder and the file, or is the file
    bool placeholder = false; // the content lies in a cloud store

    bool operator==(const MemberFacts &) const = default;
};

// One entry a member, in their order. `root` is the folder that was scanned. Asks the disk about every
// member: not on the interface thread. Ends early, with fewer entries, when the flag is set.
std::vector<MemberFacts> readMembers(const QString &root, const DuplicateGroup &group,
                                     const core::CancelFlag &cancel);

// What a removal needs to know about a member that is shown.
platform::ShownFile shownFile(const QString &root, const FileRecord &file, const MemberFacts &facts);

} // namespace duplicates
