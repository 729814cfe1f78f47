// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/GroupRows.h"

#include <QStringMatcher>

#include <algorithm>

namespace duplicates
{

namespace
{

quint64 freeable(const DuplicateGroup &group)
{
    const auto left = static_cast<quint64>(std::count_if(group.members.cbegin(), group.members.cend(),
                                                         [](const FileRecord &file) { return !file.moved; }));
    return left > 1 ? group.size * (left - 1) : 0;
}

// What is listed first is "less".
bool isBefore(const DuplicateGroup &a, const DuplicateGroup &b, GroupOrder order)
{
    const FileRecord &first = a.members.front();
    const FileRecord &second = b.members.front();
    switch (order) {
    case GroupOrder::Freeable:
        return freeable(a) > freeable(b);
    case GroupOrder::Members:
        return a.members.size() > b.members.size();
    case GroupOrder::Name:
        return first.name.compare(second.name, Qt::CaseInsensitive) < 0;
    case GroupOrder::Folder:
        return first.walkedFolder.compare(second.walkedFolder, Qt::CaseInsensitive) < 0;
    case GroupOrder::Report:
        break;
    }
    return false;
}

} // namespace

std::vector<int> listedGroups(const std::vector<DuplicateGroup> &groups, const QString &search,
                              GroupOrder order)
{
    const QStringMatcher matcher(search, Qt::CaseInsensitive);
    const auto matches = [&](const FileRecord &file) { return matcher.indexIn(file.name) >= 0; };
    std::vector<int> listed;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const std::vector<FileRecord> &members = groups[i].members;
        if (search.isEmpty() || std::any_of(members.cbegin(), members.cend(), matches))
            listed.push_back(static_cast<int>(i));
    }
    if (order != GroupOrder::Report)
        std::stable_sort(listed.begin(), listed.end(), [&](int a, int b) {
            return isBefore(groups[static_cast<std::size_t>(a)], groups[static_cast<std::size_t>(b)], order);
        });
    return listed;
}

} // namespace duplicates
