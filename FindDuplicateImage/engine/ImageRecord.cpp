// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/ImageRecord.h"

#include <algorithm>

namespace lookalikes
{

namespace
{

bool isBetter(const ImageRecord &a, const ImageRecord &b)
{
    const qint64 aPixels = qint64(a.width) * a.height;
    const qint64 bPixels = qint64(b.width) * b.height;
    if (aPixels != bPixels)
        return aPixels > bPixels;
    if (a.size != b.size)
        return a.size > b.size;
    return a.lastWriteTime < b.lastWriteTime;
}

} // namespace

void sortForReport(std::vector<ImageGroup> &groups)
{
    std::stable_sort(groups.begin(), groups.end(), [](const ImageGroup &a, const ImageGroup &b) {
        return a.members.front().size > b.members.front().size;
    });
}

std::optional<std::size_t> proposedToKeep(const ImageGroup &group)
{
    std::optional<std::size_t> best;
    for (std::size_t i = 0; i < group.members.size(); ++i)
        if (!group.members[i].checked && (!best || isBetter(group.members[i], group.members[*best])))
            best = i;
    return best;
}

quint64 freeableBytes(const ImageGroup &group)
{
    const std::optional<std::size_t> kept = proposedToKeep(group);
    quint64 bytes = 0;
    for (std::size_t i = 0; i < group.members.size(); ++i)
        bytes += i == kept || group.members[i].checked ? 0U : group.members[i].size;
    return bytes;
}

} // namespace lookalikes
