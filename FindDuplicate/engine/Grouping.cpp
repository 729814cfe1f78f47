// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/Grouping.h"

#include <QHashFunctions>

#include <algorithm>
#include <iterator>
#include <utility>

namespace duplicates
{

namespace
{

// The finaliser of the SplitMix64 generator: every input bit affects every output bit.
quint64 mixed(quint64 value)
{
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9U;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebU;
    return value ^ (value >> 31);
}

quint32 tagOf(quint64 hash)
{
    return static_cast<quint32>(hash >> 32);
}

} // namespace

DuplicateGrouper::DuplicateGrouper() : m_seed(QHashSeed::globalSeed()), m_slots(64) {}

quint64 DuplicateGrouper::hash(const FileRecord &file) const
{
    return mixed(mixed(file.size ^ m_seed) ^ file.lastWriteTime);
}

DuplicateGrouper::Slot &DuplicateGrouper::slotOf(const FileRecord &file, quint64 hash)
{
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t i = static_cast<std::size_t>(hash) & mask;; i = (i + 1) & mask) {
        Slot &slot = m_slots[i];
        if (slot.candidate == 0)
            return slot;
        if (slot.tag != tagOf(hash))
            continue;
        const FileRecord &candidate = m_candidates[slot.candidate - 1];
        if (candidate.size == file.size && candidate.lastWriteTime == file.lastWriteTime)
            return slot;
    }
}

void DuplicateGrouper::grow()
{
    m_slots.assign(m_slots.size() * 2, {});
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t c = 0; c < m_candidates.size(); ++c) {
        const quint64 candidateHash = hash(m_candidates[c]);
        std::size_t i = static_cast<std::size_t>(candidateHash) & mask;
        while (m_slots[i].candidate != 0)
            i = (i + 1) & mask;
        m_slots[i] = {tagOf(candidateHash), static_cast<quint32>(c + 1)};
    }
}

void DuplicateGrouper::add(FileRecord file)
{
    if (m_candidates.size() * 2 >= m_slots.size())
        grow();
    const quint64 fileHash = hash(file);
    Slot &slot = slotOf(file, fileHash);
    if (slot.candidate == 0) {
        m_candidates.push_back(std::move(file));
        m_groupOf.push_back(noGroup);
        slot = {tagOf(fileHash), static_cast<quint32>(m_candidates.size())};
        return;
    }
    quint32 &group = m_groupOf[slot.candidate - 1];
    if (group == noGroup) {
        group = static_cast<quint32>(m_groups.size());
        m_groups.push_back({{m_candidates[slot.candidate - 1]}, file.size});
    }
    m_groups[group].members.push_back(std::move(file));
}

// The report inserts each group, in category order and order of creation, before the first group that is not
// larger. The list is sorted at any time, so a later group comes before all equal ones: the same as a stable
// sort of the reversed sequence.
std::vector<DuplicateGroup> combinedGroups(std::vector<std::vector<DuplicateGroup>> byCategory)
{
    std::vector<DuplicateGroup> combined;
    for (auto category = byCategory.rbegin(); category != byCategory.rend(); ++category)
        combined.insert(combined.end(), std::make_move_iterator(category->rbegin()),
                        std::make_move_iterator(category->rend()));
    std::stable_sort(combined.begin(), combined.end(),
                     [](const DuplicateGroup &a, const DuplicateGroup &b) { return a.size > b.size; });
    return combined;
}

std::size_t filesLeft(const DuplicateGroup &group)
{
    return static_cast<std::size_t>(std::count_if(group.members.cbegin(), group.members.cend(),
                                                  [](const FileRecord &file) { return !file.moved; }));
}

quint64 freeableBytes(const DuplicateGroup &group)
{
    const std::size_t left = filesLeft(group);
    return left > 1 ? group.size * (left - 1) : 0;
}

GroupStatistics statisticsOf(const std::vector<DuplicateGroup> &groups)
{
    GroupStatistics result;
    result.groups = groups.size();
    for (const DuplicateGroup &group : groups) {
        const std::size_t left = filesLeft(group);
        const std::size_t moved = group.members.size() - left;
        result.files += left;
        result.removedFiles += moved;
        result.removedBytes += group.size * moved;
        result.freeableBytes += freeableBytes(group);
    }
    return result;
}

} // namespace duplicates
