// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/Members.h"

namespace duplicates
{

namespace
{

// All but the mark, of which only `exists`, and but for `throughLink`.
MemberFacts factsOf(const FileRecord &file, core::FileProbe &probe)
{
    MemberFacts facts;
    const QString path = file.fullPath();
    const std::optional<quint32> attributes = probe.listedAttributes(path);
    facts.mark.exists = attributes.has_value();
    if (!attributes)
        return facts;
    facts.placeholder = core::isPlaceholder(*attributes);
    // Even to ask who it is would fetch this one; without an identity it counts as nobody's further copy.
    if ((*attributes & core::AttributeRecallOnOpen) != 0)
        return facts;
    if (const std::optional<core::FileFacts> opened = probe.facts(path)) {
        facts.identity = opened->identity;
        facts.hardLinked = opened->linkCount > 1;
        facts.changed = opened->size != file.size || opened->lastWriteTime != file.lastWriteTime;
    }
    return facts;
}

bool isThroughLink(const QString &root, const FileRecord &file, const MemberFacts &facts,
                   core::FileProbe &probe)
{
    return facts.identity && !probe.isInside(root, file.fullPath());
}

// Whether it may be the one to be kept.
bool isChoice(const FileRecord &file, const MemberFacts &facts)
{
    return facts.mark.exists && !file.moved && !facts.changed && !facts.throughLink;
}

bool isBetterToKeep(const FileRecord &a, const FileRecord &b)
{
    if (a.creationTime != b.creationTime)
        return a.creationTime < b.creationTime;
    return a.fullPath().size() < b.fullPath().size();
}

// What has changed is no copy of the others, so it must not keep one of them from being the last.
MemberState stateOf(const MemberFacts &facts)
{
    return {facts.mark.exists, facts.changed ? std::nullopt : facts.identity};
}

} // namespace

std::vector<MemberFacts> readMembers(const QString &root, const std::vector<FileRecord> &members,
                                     core::FileProbe &probe, const core::CancelFlag &cancel)
{
    std::vector<MemberFacts> all;
    std::vector<MemberState> states;
    for (const FileRecord &file : members) {
        if (cancel.isSet())
            return all;
        MemberFacts facts = factsOf(file, probe);
        facts.throughLink = isThroughLink(root, file, facts, probe);
        states.push_back(stateOf(facts));
        all.push_back(std::move(facts));
    }
    const std::vector<MemberMark> marks = markMembers(states);
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i].mark = marks[i];
    return all;
}

MemberFacts readMember(const QString &root, const std::vector<FileRecord> &members, std::size_t member,
                       core::FileProbe &probe, const core::CancelFlag &cancel)
{
    MemberFacts asked = factsOf(members[member], probe);
    asked.throughLink = isThroughLink(root, members[member], asked, probe);
    std::optional<core::FileIdentity> first = stateOf(asked).identity;
    bool twoKnown = false;
    for (std::size_t i = 0; i < members.size() && !twoKnown && !cancel.isSet(); ++i) {
        if (i == member)
            continue;
        const std::optional<core::FileIdentity> identity = stateOf(factsOf(members[i], probe)).identity;
        twoKnown = first && identity && *identity != *first;
        if (!first)
            first = identity;
    }
    asked.mark.lastCopy = asked.mark.exists && !twoKnown;
    return asked;
}

std::optional<std::size_t> proposedToKeep(const std::vector<FileRecord> &members,
                                          const std::vector<MemberFacts> &facts)
{
    std::optional<std::size_t> best;
    for (std::size_t i = 0; i < members.size(); ++i)
        if (isChoice(members[i], facts[i]) && (!best || isBetterToKeep(members[i], members[*best])))
            best = i;
    return best && !facts[*best].mark.lastCopy ? best : std::nullopt;
}

} // namespace duplicates
