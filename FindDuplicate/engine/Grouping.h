// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/FileRecord.h"

#include <QtGlobal>

#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace duplicates
{

// Groups the files of one category as they come: two are duplicates when size and last-write time are equal.
// Each file costs one hash access, and the groups, their members and their order are those of comparing it
// with every earlier candidate in turn.
class DuplicateGrouper
{
public:
    DuplicateGrouper();

    void add(FileRecord file);

    // The files without an earlier duplicate, in the order in which they came.
    const std::vector<FileRecord> &candidates() const { return m_candidates; }
    // In the order in which their second members came.
    const std::vector<DuplicateGroup> &groups() const { return m_groups; }
    std::vector<DuplicateGroup> takeGroups() { return std::move(m_groups); }

private:
    // A hash table of its own, since a node for each of a million files would cost more than all the rest.
    // Its size is a power of two, and it is at most half full; a place that is taken passes on to the next.
    struct Slot {
        quint32 tag = 0;       // bits of the hash, so that hardly any other candidate is looked at in vain
        quint32 candidate = 0; // its index plus one, 0 = free
    };
    static constexpr quint32 noGroup = std::numeric_limits<quint32>::max();

    quint64 hash(const FileRecord &file) const;
    // The slot of the candidate with the file's size and time, or the free one where it belongs.
    Slot &slotOf(const FileRecord &file, quint64 hash);
    void grow();

    const quint64 m_seed; // another one in every process: nobody can choose files that collide
    std::vector<Slot> m_slots;
    std::vector<FileRecord> m_candidates;
    std::vector<quint32> m_groupOf; // for each candidate
    std::vector<DuplicateGroup> m_groups;
};

// The groups of all categories in the order of the report: largest file first. Among groups of equal size the
// later category stands first, and within a category the later group.
std::vector<DuplicateGroup> combinedGroups(std::vector<std::vector<DuplicateGroup>> byCategory);

struct GroupStatistics {
    std::size_t groups = 0;
    std::size_t files = 0;
    quint64 freeableBytes = 0; // what removing all but one member of each group would free
    std::size_t removedFiles = 0;
    quint64 removedBytes = 0; // of the members that were moved away so far

    bool operator==(const GroupStatistics &) const = default;
};

// Members that were not moved away.
std::size_t filesLeft(const DuplicateGroup &group);
// What removing all but one of those that are still there would free.
quint64 freeableBytes(const DuplicateGroup &group);
// Members already moved away count as removed only; a group that has one member left frees nothing.
GroupStatistics statisticsOf(const std::vector<DuplicateGroup> &groups);

} // namespace duplicates
