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

// The finaliser of the SplitMix64 generator: every input bit reaches every output bit.
quint64 mixed(quint64 value)
{
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9U;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebU;
    return value ^ (value >> 31);
}

} // namespace

std::size_t DuplicateGrouper::Hash::operator()(const Key &key) const noexcept
{
    return static_cast<std::size_t>(mixed(mixed(key.size ^ seed) ^ key.lastWriteTime));
}

DuplicateGrouper::DuplicateGrouper() : m_places(0, Hash{QHashSeed::globalSeed()}) {}

void DuplicateGrouper::add(FileRecord file)
{
    const auto [entry, isNew] =
        m_places.try_emplace(Key{file.size, file.lastWriteTime}, Place{m_candidates.size()});
    if (isNew) {
        m_candidates.push_back(std::move(file));
        return;
    }
    Place &place = entry->second;
    if (place.group == noGroup) {
        place.group = m_groups.size();
        m_groups.push_back({{m_candidates[place.candidate]}, file.size});
    }
    m_groups[place.group].members.push_back(std::move(file));
}

// The report's rule puts each group, in category order and order of creation, before the first one that is
// not larger. What is already there is sorted, so that a later group ends up before all its equals: a stable
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

GroupStatistics statisticsOf(const std::vector<DuplicateGroup> &groups)
{
    GroupStatistics result;
    result.groups = groups.size();
    for (const DuplicateGroup &group : groups) {
        const auto removed =
            static_cast<std::size_t>(std::count_if(group.members.cbegin(), group.members.cend(),
                                                   [](const FileRecord &file) { return file.checked; }));
        const std::size_t left = group.members.size() - removed;
        result.files += left;
        result.removedBytes += group.size * removed;
        if (left > 1)
            result.freeableBytes += group.size * (left - 1);
    }
    return result;
}

} // namespace duplicates
