// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

namespace securedelete
{

// A run of a file's clusters. Clusters of the volume are written by their number, so these figures must be
// right.
struct Extent {
    qint64 virtualCluster = 0;  // of the file
    qint64 logicalCluster = -1; // of the volume; -1 is a hole, or not written out
    qint64 clusters = 0;
    bool operator==(const Extent &) const = default;

    bool isAllocated() const { return logicalCluster != -1; }
};

struct VolumeFacts {
    QString fileSystem;
    quint64 totalClusters = 0;
    quint32 clusterSize = 0; // bytes
};

// Whether these can be the clusters of a file on this volume: NTFS, rising without a gap from 0, none empty,
// none at the volume's start or beyond its end, none of two runs in the same place, and at least one there.
bool areBelievable(const std::vector<Extent> &extents, const VolumeFacts &volume);

} // namespace securedelete
