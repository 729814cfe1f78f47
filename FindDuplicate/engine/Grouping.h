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

// Groups the files of one category as they arrive: files are duplicates if size and last-write time are
// equal. Each file costs one hash lookup; groups, members and their order are the same as when comparing it
// with all earlier candidates in turn.
class DuplicateGrouper
{
public:
    DuplicateGrouper();

    void add(FileRecord file);

    // Files without an earlier duplicate, in order of arrival.
    const std::vector<FileRecord> &candidates() const { return m_candidates; }
    // In the order in which their second members arrived.
    const std::vector<DuplicateGroup> &groups() const { return m_groups; }
    std::vector<DuplicateGroup> takeGroups() { return std::move(m_groups); }

private:
    // A custom hash table, since a node per file would cost more than everything else for a million files.
    // Open addressing with linear probing; the size is a power of two, and at most half is used.
    struct Slot {
        quint32 tag = 0;       // hash bits, which avoid almost all unnecessary comparisons
        quint32 candidate = 0; // index plus one; 0 if free
    };
    static constexpr quint32 noGroup = std::numeric_limits<quint32>::max();

    quint64 hash(const FileRecord &file) const;
    // The slot of the candidate with the file's size and time, or the free slot for it.
    Slot &slotOf(const FileRecord &file, quint64 hash);
    void grow();

    const quint64 m_seed; // random per process, so that nobody can construct colliding files
    std::vector<Slot> m_slots;
    std::vector<FileRecord> m_candidates;
    std::vector<quint32> m_groupOf; // by candidate
    std::vector<DuplicateGroup> m_groups;
};

// The groups of all categories in report order: largest files first. Among groups of equal size, later
// categories come first, and within a category later groups.
std::vector<DuplicateGroup> combinedGroups(std::vector<std::vector<DuplicateGroup>> byCategory);

struct GroupStatistics {
    std::size_t groups = 0;
    std::size_t files = 0;
    quint64 freeableBytes = 0; // freed by removing all but one member of each group
    std::size_t removedFiles = 0;
    quint64 removedBytes = 0; // of the members moved so far

    bool operator==(const GroupStatistics &) const = default;
};

// Members that were not moved.
std::size_t filesLeft(const DuplicateGroup &group);
// Bytes freed by removing all but one of the remaining members.
quint64 freeableBytes(const DuplicateGroup &group);
// Moved members only count as removed; a group with a single remaining member frees nothing.
GroupStatistics statisticsOf(const std::vector<DuplicateGroup> &groups);

} // namespace duplicates
