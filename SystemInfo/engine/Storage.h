// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

// A volume on a partition of a disk, by WMI device ids.
struct DiskLink {
    QString disk;
    QString partition;
    QString volume; // "C:"
};

// Returns the small icon of a drive root.
using IconOf = std::function<QImage(const QString &root)>;

// The rows of the disks in the order of `disks`. Links match volumes ignoring case; links without a volume
// are left out.
Row storageRow(const std::vector<core::WmiRow> &disks, const std::vector<core::WmiRow> &volumes,
               const std::vector<DiskLink> &links, const IconOf &icons);

// The two WQL queries that lead from a disk to its volumes. WQL keys need doubled backslashes; some WMI
// versions want them undoubled. nullopt if the disk id is too short to contain a name.
std::optional<QString> partitionsOfDisk(const QString &deviceId, bool doubled);
QString volumesOfPartition(const QString &partitionId);

} // namespace systeminfo
