// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/MemberMarks.h"

#include <QHashFunctions>

#include <cstddef>
#include <unordered_map>
#include <unordered_set>

namespace duplicates
{

namespace
{

struct IdentityHash {
    std::size_t operator()(const core::FileIdentity &identity) const noexcept
    {
        return qHashMulti(QHashSeed::globalSeed(), identity.volume, identity.file, identity.fileHigh);
    }
};

} // namespace

std::vector<MemberMark> markMembers(const std::vector<MemberState> &members)
{
    std::unordered_map<core::FileIdentity, int, IdentityHash> firstWith;
    std::vector<MemberMark> marks(members.size());
    for (std::size_t i = 0; i < members.size(); ++i) {
        marks[i].exists = members[i].exists;
        if (!members[i].exists || !members[i].identity)
            continue;
        const auto [first, isNew] = firstWith.try_emplace(*members[i].identity, static_cast<int>(i));
        if (!isNew)
            marks[i].sameFileAs = first->second;
    }
    // Each known identity is a separate file. A member of unknown identity may be any of them.
    std::unordered_map<int, std::unordered_set<core::FileIdentity, IdentityHash>> filesOf; // by content
    for (const MemberState &member : members)
        if (member.exists && member.identity && member.isCopy)
            filesOf[member.content].insert(*member.identity);
    for (std::size_t i = 0; i < members.size(); ++i)
        marks[i].lastCopy = members[i].exists && filesOf[members[i].content].size() < 2;
    return marks;
}

} // namespace duplicates
