// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/ListedGroups.h"

#include "core/FolderWalk.h"

#include <QStringMatcher>
#include <QStringView>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>

namespace lookalikes
{

namespace
{

// Each key is made once: there may be a hundred thousand groups, and folding the case of a path takes longer
// than comparing two.
template <class Before, class KeyOf>
void sortBy(std::vector<int> &listed, const std::vector<ImageGroup> &groups, Before before, KeyOf keyOf)
{
    using Row = std::pair<decltype(keyOf(groups.front())), int>;
    std::vector<Row> rows;
    rows.reserve(listed.size());
    for (const int group : listed)
        rows.emplace_back(keyOf(groups[static_cast<std::size_t>(group)]), group);
    std::stable_sort(rows.begin(), rows.end(),
                     [&](const Row &a, const Row &b) { return before(a.first, b.first); });
    std::transform(rows.cbegin(), rows.cend(), listed.begin(), [](const Row &row) { return row.second; });
}

void sort(std::vector<int> &listed, const std::vector<ImageGroup> &groups, GroupOrder order)
{
    switch (order) {
    case GroupOrder::Report:
        break;
    case GroupOrder::Freeable:
        sortBy(listed, groups, std::greater<>(), &freeableBytes);
        break;
    case GroupOrder::Members:
        sortBy(listed, groups, std::greater<>(),
               [](const ImageGroup &group) { return group.members.size(); });
        break;
    case GroupOrder::Name:
        sortBy(listed, groups, std::less<>(),
               [](const ImageGroup &group) { return group.members.front().name.toCaseFolded(); });
        break;
    case GroupOrder::Folder:
        sortBy(listed, groups, std::less<>(),
               [](const ImageGroup &group) { return group.members.front().walkedFolder.toCaseFolded(); });
        break;
    }
}

} // namespace

std::vector<int> listedGroups(const std::vector<ImageGroup> &groups, const QString &root,
                              const QString &search, GroupOrder order)
{
    const QStringMatcher matcher(search, Qt::CaseInsensitive);
    const qsizetype rootLength = core::walkRoot(root).size();
    const auto matches = [&](const ImageRecord &image) {
        return matcher.indexIn(image.name) >= 0 ||
               matcher.indexIn(QStringView(image.walkedFolder).mid(rootLength)) >= 0;
    };
    std::vector<int> listed;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const std::vector<ImageRecord> &members = groups[i].members;
        if (search.isEmpty() || std::any_of(members.cbegin(), members.cend(), matches))
            listed.push_back(static_cast<int>(i));
    }
    sort(listed, groups, order);
    return listed;
}

} // namespace lookalikes
