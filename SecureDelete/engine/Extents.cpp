// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/engine/Extents.h"

#include <algorithm>
#include <limits>

namespace securedelete
{

namespace
{

bool liesOnVolume(const Extent &extent, quint64 totalClusters)
{
    // Cluster 0 belongs to the boot sector.
    return extent.logicalCluster > 0 && static_cast<quint64>(extent.clusters) <= totalClusters &&
           static_cast<quint64>(extent.logicalCluster) <=
               totalClusters - static_cast<quint64>(extent.clusters);
}

bool overlapAnywhere(std::vector<Extent> runs)
{
    std::ranges::sort(runs, {}, &Extent::logicalCluster);
    return std::ranges::adjacent_find(runs, [](const Extent &a, const Extent &b) {
               return a.logicalCluster + a.clusters > b.logicalCluster;
           }) != runs.end();
}

} // namespace

bool areBelievable(const std::vector<Extent> &extents, const VolumeFacts &volume)
{
    constexpr auto maxBytes = static_cast<quint64>(std::numeric_limits<qint64>::max());
    if (volume.fileSystem != QLatin1String("NTFS") || volume.clusterSize == 0 ||
        volume.totalClusters > maxBytes / volume.clusterSize)
        return false;
    std::vector<Extent> runs;
    qint64 next = 0;
    for (const Extent &extent : extents) {
        if (extent.virtualCluster != next || extent.clusters <= 0 ||
            extent.clusters > std::numeric_limits<qint64>::max() - next)
            return false;
        next += extent.clusters;
        if (!extent.isAllocated())
            continue;
        if (!liesOnVolume(extent, volume.totalClusters))
            return false;
        runs.push_back(extent);
    }
    return !runs.empty() && !overlapAnywhere(std::move(runs));
}

} // namespace securedelete
