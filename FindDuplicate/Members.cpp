// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/Members.h"

#include "FindDuplicate/engine/ContentComparison.h"
#include "platform/FileReader.h"
#include "platform/Paths.h"

namespace duplicates
{

namespace
{

void readFacts(const QString &root, const FileRecord &file, MemberFacts &facts)
{
    const QString path = file.fullPath();
    const std::optional<quint32> attributes = platform::listedAttributes(path);
    facts.mark.exists = attributes.has_value();
    if (!attributes)
        return;
    facts.placeholder = core::isPlaceholder(*attributes);
    // Even to ask who it is would fetch this one; without an identity it counts as nobody's further copy.
    if ((*attributes & core::AttributeRecallOnOpen) != 0)
        return;
    if (const std::optional<platform::FileFacts> opened = platform::fileFacts(path)) {
        facts.identity = opened->identity;
        facts.changed = opened->size != file.size || opened->lastWriteTime != file.lastWriteTime;
        facts.throughLink = !platform::isInside(root, path);
    }
}

} // namespace

std::vector<MemberFacts> readMembers(const QString &root, const DuplicateGroup &group,
                                     const core::CancelFlag &cancel)
{
    std::vector<MemberFacts> members;
    std::vector<MemberState> states;
    for (const FileRecord &file : group.members) {
        if (cancel.isSet())
            return members;
        MemberFacts facts;
        readFacts(root, file, facts);
        // What has changed is no copy of the others, so it must not keep one of them from being the last.
        states.push_back({facts.mark.exists, facts.changed ? std::nullopt : facts.identity});
        members.push_back(facts);
    }
    const std::vector<MemberMark> marks = markMembers(states);
    for (std::size_t i = 0; i < members.size(); ++i)
        members[i].mark = marks[i];
    return members;
}

platform::ShownFile shownFile(const QString &root, const FileRecord &file, const MemberFacts &facts)
{
    return {root, file.fullPath(), file.size, file.lastWriteTime, facts.identity};
}

} // namespace duplicates
