// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

namespace securedelete
{

// A run of a file's clusters. The volume is written at these cluster numbers, so they must be right.
struct Extent {
    qint64 virtualCluster = 0;  // within the file
    qint64 logicalCluster = -1; // on the volume; -1 for a hole or unallocated
    qint64 clusters = 0;
    bool operator==(const Extent &) const = default;

    bool isAllocated() const { return logicalCluster != -1; }
};

struct VolumeFacts {
    QString fileSystem;
    quint64 totalClusters = 0;
    quint32 clusterSize = 0; // in bytes
};

// Whether these are plausible as the clusters of a file on this volume: the volume is NTFS; runs ascend from
// 0 without gaps, none is empty, at the volume's start or beyond its end, none overlap, and at least one is
// allocated.
bool areBelievable(const std::vector<Extent> &extents, const VolumeFacts &volume);

} // namespace securedelete
