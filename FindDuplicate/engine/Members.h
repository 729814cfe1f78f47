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

// Facts about a group member at the time of the query.
struct MemberFacts {
    MemberMark mark;
    std::optional<core::FileIdentity> identity;
    bool changed = false;     // size or last-write time differs from the scan, so it is no copy any more
    bool throughLink = false; // the file, or a folder between it and the scanned folder, is a link
    bool placeholder = false; // the content is in the cloud
    bool hardLinked = false;  // the file has several hard links, here or elsewhere
    bool uncertain = false;   // different identities of this kind may denote the same file

    bool operator==(const MemberFacts &) const = default;
};

// The result of a comparison of the group, one entry per member; empty if not compared.
using GroupContents = std::vector<ContentState>;

// One entry per member, in member order. `root` is the scanned folder. Queries the disk for every member: not
// for the interface thread. If the flag is set, returns early with fewer entries and no marks.
std::vector<MemberFacts> readMembers(const QString &root, const std::vector<FileRecord> &members,
                                     core::FileProbe &probe, const core::CancelFlag &cancel,
                                     const GroupContents &contents = {});

// Updates the marks after a comparison.
void markAgain(std::vector<MemberFacts> &facts, const GroupContents &contents);

// The facts of one member. Queries the others only until two files are known, as then none is the last copy;
// `mark.sameFileAs` is not determined. The result is meaningless if the flag is set.
MemberFacts readMember(const QString &root, const std::vector<FileRecord> &members, std::size_t member,
                       core::FileProbe &probe, const core::CancelFlag &cancel,
                       const GroupContents &contents = {});

// Bytes freed by keeping one of the identical members, each of `size` bytes. Further names of a file free
// nothing, nor do members reached through a link, which are never removed.
quint64 spareBytes(quint64 size, const std::vector<MemberFacts> &facts, const GroupContents &contents);

// The member suggested to be kept: the oldest creation time, then the shortest path, then the first. Skips
// members that were moved, are missing or changed, are reached through a link, or whose content differs.
// nullopt if there are less than two files to choose from.
std::optional<std::size_t> proposedToKeep(const std::vector<FileRecord> &members,
                                          const std::vector<MemberFacts> &facts,
                                          const GroupContents &contents = {});

} // namespace duplicates
