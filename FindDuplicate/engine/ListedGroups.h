// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/FileRecord.h"

#include <QString>
#include <QStringList>
#include <QStringMatcher>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

// Selects and sorts the groups of a results page. A group is any type with `members` that are FileRecords;
// both finders have one.
namespace duplicates
{

// Stable: ties keep report order.
enum class GroupOrder {
    Report,   // largest file first
    Freeable, // most bytes first, from `freeable`
    Members,  // most first
    Name,     // of the first member, ignoring case
    Folder    // of the first member, ignoring case
};

// Searches a text in file names, and in the part of their folders below the scanned `root`, ignoring case.
class FileSearch
{
public:
    FileSearch(const QString &root, const QString &text);

    bool matches(const FileRecord &file) const;

private:
    qsizetype m_rootLength;
    QStringMatcher m_matcher;
};

// Sorts with precomputed keys: there may be a hundred thousand groups, and folding the case of a path takes
// longer than comparing two.
template <class Before, class KeyOf>
void sortGroups(std::vector<int> &listed, Before before, KeyOf keyOf)
{
    using Row = std::pair<decltype(keyOf(std::size_t(0))), int>;
    std::vector<Row> rows;
    rows.reserve(listed.size());
    for (const int group : listed)
        rows.emplace_back(keyOf(static_cast<std::size_t>(group)), group);
    std::stable_sort(rows.begin(), rows.end(),
                     [&](const Row &a, const Row &b) { return before(a.first, b.first); });
    std::transform(rows.cbegin(), rows.cend(), listed.begin(), [](const Row &row) { return row.second; });
}

// The indexes of the groups with a matching member; an empty search matches every group. `freeable` contains
// the bytes per group, and is only needed for that order.
template <class Group>
std::vector<int> listedGroups(const std::vector<Group> &groups, const QString &root, const QString &search,
                              GroupOrder order, const std::vector<quint64> &freeable)
{
    const FileSearch file(root, search);
    const auto matches = [&file](const FileRecord &member) { return file.matches(member); };
    std::vector<int> listed;
    for (std::size_t i = 0; i < groups.size(); ++i)
        if (search.isEmpty() || std::any_of(groups[i].members.cbegin(), groups[i].members.cend(), matches))
            listed.push_back(static_cast<int>(i));
    const auto first = [&groups](std::size_t group) -> const FileRecord & {
        return groups[group].members.front();
    };
    switch (order) {
    case GroupOrder::Report:
        break;
    case GroupOrder::Freeable:
        sortGroups(listed, std::greater<>(), [&](std::size_t group) { return freeable[group]; });
        break;
    case GroupOrder::Members:
        sortGroups(listed, std::greater<>(), [&](std::size_t group) { return groups[group].members.size(); });
        break;
    case GroupOrder::Name:
        sortGroups(listed, std::less<>(),
                   [&](std::size_t group) { return first(group).name.toCaseFolded(); });
        break;
    case GroupOrder::Folder:
        sortGroups(listed, std::less<>(),
                   [&](std::size_t group) { return first(group).walkedFolder.toCaseFolded(); });
        break;
    }
    return listed;
}

// The first member of each of these groups that was not removed. Skips groups without one.
template <class Group>
QStringList firstPaths(const std::vector<Group> &groups, const std::vector<int> &wanted)
{
    QStringList paths;
    for (const int group : wanted) {
        const auto &members = groups[static_cast<std::size_t>(group)].members;
        const auto left =
            std::find_if(members.cbegin(), members.cend(), [](const auto &file) { return !file.checked; });
        if (left != members.cend())
            paths.append(left->fullPath());
    }
    return paths;
}

} // namespace duplicates
