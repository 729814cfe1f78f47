// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/FileRecord.h"

#include <QtGlobal>

#include <cstddef>
#include <limits>
#include <unordered_map>
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
    struct Key {
        quint64 size;
        quint64 lastWriteTime;
        bool operator==(const Key &) const = default;
    };
    // Seeded anew in every process: whoever chooses files' sizes and times cannot choose collisions.
    struct Hash {
        quint64 seed;
        std::size_t operator()(const Key &key) const noexcept;
    };
    static constexpr std::size_t noGroup = std::numeric_limits<std::size_t>::max();
    struct Place {
        std::size_t candidate;
        std::size_t group = noGroup;
    };

    std::vector<FileRecord> m_candidates;
    std::vector<DuplicateGroup> m_groups;
    std::unordered_map<Key, Place, Hash> m_places;
};

// The groups of all categories in the order of the report: largest file first. Among groups of equal size the
// later category stands first, and within a category the later group.
std::vector<DuplicateGroup> combinedGroups(std::vector<std::vector<DuplicateGroup>> byCategory);

struct GroupStatistics {
    std::size_t groups = 0;
    std::size_t files = 0;
    quint64 freeableBytes = 0; // what removing all but one member of each group would free
    quint64 removedBytes = 0;  // of the members that were removed so far

    bool operator==(const GroupStatistics &) const = default;
};

// Members already removed count in removedBytes only; a group that has one member left frees nothing.
GroupStatistics statisticsOf(const std::vector<DuplicateGroup> &groups);

} // namespace duplicates
