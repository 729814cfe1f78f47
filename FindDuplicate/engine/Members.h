// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/ContentComparison.h"
#include "FindDuplicate/engine/FileRecord.h"
#include "FindDuplicate/engine/MemberMarks.h"
#include "core/CancelFlag.h"
#include "core/FileProbe.h"

#include <QString>

#include <cstddef>
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
    bool hardLinked = false;  // the file has more names than this one, here or elsewhere
    bool uncertain = false;   // two such identities may be one file

    bool operator==(const MemberFacts &) const = default;
};

// What a comparison of the group found, an entry a member; none when there was none.
using GroupContents = std::vector<ContentState>;

// One entry a member, in their order. `root` is the folder that was scanned. Asks the disk about every
// member: not on the interface thread. Ends early, with fewer entries and no marks, when the flag is set.
std::vector<MemberFacts> readMembers(const QString &root, const std::vector<FileRecord> &members,
                                     core::FileProbe &probe, const core::CancelFlag &cancel,
                                     const GroupContents &contents = {});

// Marks the members anew, after a comparison.
void markAgain(std::vector<MemberFacts> &facts, const GroupContents &contents);

// The facts of one member. Asks about the others only until two files are known, after which none is the last
// copy: `mark.sameFileAs` is not looked for. Without a meaning when the flag is set.
MemberFacts readMember(const QString &root, const std::vector<FileRecord> &members, std::size_t member,
                       core::FileProbe &probe, const core::CancelFlag &cancel,
                       const GroupContents &contents = {});

// What keeping one of those that are alike would free, each of `size` bytes. Another name of a file frees
// nothing.
quint64 spareBytes(quint64 size, const std::vector<MemberFacts> &facts, const GroupContents &contents);

// The member that is proposed to be kept: the one created first, among equals the one with the shortest path,
// then the first. Passed over are those that were moved, that have gone or changed, and that are reached
// through a link, and whose content is not that of the others. Empty when there are not two files to choose
// from.
std::optional<std::size_t> proposedToKeep(const std::vector<FileRecord> &members,
                                          const std::vector<MemberFacts> &facts,
                                          const GroupContents &contents = {});

} // namespace duplicates
