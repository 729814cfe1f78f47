// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/Members.h"

#include <algorithm>

namespace duplicates
{

namespace
{

// Sets everything except `throughLink` and the mark, of which only `exists` is set.
MemberFacts factsOf(const FileRecord &file, core::FileProbe &probe)
{
    MemberFacts facts;
    const QString path = file.fullPath();
    const std::optional<quint32> attributes = probe.listedAttributes(path);
    facts.mark.exists = attributes.has_value();
    if (!attributes)
        return facts;
    facts.placeholder = core::isPlaceholder(*attributes);
    // Even querying the identity would download this file; without an identity it never counts as another
    // copy.
    if ((*attributes & core::AttributeRecallOnOpen) != 0)
        return facts;
    if (const std::optional<core::FileFacts> opened = probe.facts(path)) {
        facts.identity = opened->identity;
        facts.uncertain = opened->identity && !opened->identityIsCertain;
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

// Empty if no file could be read, which says nothing about the contents.
GroupContents found(const GroupContents &contents)
{
    const bool any =
        std::find(contents.cbegin(), contents.cend(), ContentState::Reference) != contents.cend();
    return any ? contents : GroupContents();
}

// Whether it was found identical by a comparison. Before a comparison all members count as identical.
bool isAlike(const GroupContents &contents, std::size_t member)
{
    return contents.empty() || contents[member] == ContentState::Reference ||
           contents[member] == ContentState::Identical;
}

// Whether this member may be suggested to be kept.
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

// A changed file is no copy of the others, so it must not prevent another from being the last copy. The same
// goes for a file elsewhere that is reached through a link, for one that may be another member under a second
// name, and for one that differed in a comparison or could not be compared: each of these gets a content
// number of its own.
MemberState stateOf(const MemberFacts &facts, const GroupContents &contents, std::size_t member)
{
    const int content = isAlike(contents, member) ? 0 : static_cast<int>(member) + 1;
    return {facts.mark.exists, facts.changed ? std::nullopt : facts.identity,
            !facts.throughLink && !facts.uncertain, content};
}

// The identity under which it counts as a copy for a member with content 0.
std::optional<core::FileIdentity> copyIdentity(const MemberState &state)
{
    return state.isCopy && state.content == 0 ? state.identity : std::nullopt;
}

} // namespace

std::vector<MemberFacts> readMembers(const QString &root, const std::vector<FileRecord> &members,
                                     core::FileProbe &probe, const core::CancelFlag &cancel,
                                     const GroupContents &contents)
{
    std::vector<MemberFacts> all;
    for (const FileRecord &file : members) {
        if (cancel.isSet())
            return all;
        MemberFacts facts = factsOf(file, probe);
        facts.throughLink = isThroughLink(root, file, facts, probe);
        all.push_back(std::move(facts));
    }
    markAgain(all, contents);
    return all;
}

void markAgain(std::vector<MemberFacts> &facts, const GroupContents &compared)
{
    const GroupContents contents = found(compared);
    std::vector<MemberState> states;
    for (std::size_t i = 0; i < facts.size(); ++i)
        states.push_back(stateOf(facts[i], contents, i));
    const std::vector<MemberMark> marks = markMembers(states);
    for (std::size_t i = 0; i < facts.size(); ++i)
        facts[i].mark = marks[i];
}

MemberFacts readMember(const QString &root, const std::vector<FileRecord> &members, std::size_t member,
                       core::FileProbe &probe, const core::CancelFlag &cancel, const GroupContents &compared)
{
    const GroupContents contents = found(compared);
    const auto read = [&](std::size_t i) {
        MemberFacts facts = factsOf(members[i], probe);
        facts.throughLink = isThroughLink(root, members[i], facts, probe);
        return facts;
    };
    MemberFacts asked = read(member);
    asked.mark.lastCopy = asked.mark.exists;
    if (!isAlike(contents, member))
        return asked;
    std::optional<core::FileIdentity> first = copyIdentity(stateOf(asked, contents, member));
    for (std::size_t i = 0; i < members.size() && asked.mark.lastCopy && !cancel.isSet(); ++i) {
        if (i == member || !isAlike(contents, i))
            continue;
        const std::optional<core::FileIdentity> identity = copyIdentity(stateOf(read(i), contents, i));
        if (first && identity && *identity != *first)
            asked.mark.lastCopy = false; // two copies are known
        if (!first)
            first = identity;
    }
    return asked;
}

quint64 spareBytes(quint64 size, const std::vector<MemberFacts> &facts, const GroupContents &compared)
{
    const GroupContents contents = found(compared);
    std::vector<bool> counted(facts.size(), false);
    quint64 files = 0;
    for (std::size_t i = 0; i < facts.size(); ++i) {
        const MemberFacts &member = facts[i];
        if (!member.mark.exists || member.changed || member.throughLink || !isAlike(contents, i))
            continue;
        // Each file once; the first of its names may be one that was just passed over.
        const std::size_t first =
            member.mark.sameFileAs < 0 ? i : static_cast<std::size_t>(member.mark.sameFileAs);
        files += counted[first] ? 0U : 1U;
        counted[first] = true;
    }
    return files > 1 ? (files - 1) * size : 0;
}

std::optional<std::size_t> proposedToKeep(const std::vector<FileRecord> &members,
                                          const std::vector<MemberFacts> &facts,
                                          const GroupContents &compared)
{
    const GroupContents contents = found(compared);
    std::optional<std::size_t> best;
    for (std::size_t i = 0; i < members.size(); ++i)
        if (isChoice(members[i], facts[i]) && isAlike(contents, i) &&
            (!best || isBetterToKeep(members[i], members[*best])))
            best = i;
    return best && !facts[*best].mark.lastCopy ? best : std::nullopt;
}

} // namespace duplicates
