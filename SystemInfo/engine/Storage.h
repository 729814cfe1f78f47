// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

// A volume on a partition of a disk, by WMI's device ids.
struct DiskLink {
    QString disk;
    QString partition;
    QString volume; // "C:"
};

// The small icon of a drive's root.
using IconOf = std::function<QImage(const QString &root)>;

// The disks' rows, in the order of `disks`; links are matched to volumes without regard to case, and those
// that match none are left out.
Row storageRow(const std::vector<core::WmiRow> &disks, const std::vector<core::WmiRow> &volumes,
               const std::vector<DiskLink> &links, const IconOf &icons);

// The two questions of the walk from a disk to its volumes. In a key of WQL backslashes stand twice; the
// plain form is for servers that want it as it is. None when the disk's id is too short to have a name in it.
std::optional<QString> partitionsOfDisk(const QString &deviceId, bool doubled);
QString volumesOfPartition(const QString &partitionId);

} // namespace systeminfo
