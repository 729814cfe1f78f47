// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileWriter.h"
#include "platform/Handle.h"

#include <QString>

namespace platform
{

// A local volume opened past its file system, for writing to clusters whose numbers the file system gave.
// Windows refuses that to all but administrators, and to them for most of a mounted volume; then nothing is
// open.
class RawVolume
{
public:
    // "\\?\Volume{...}\" of the volume that holds the path, by its mount point and not by its drive letter;
    // empty for a share.
    static QString nameOf(const QString &path);

    // Disk. Never opened under Wine, which would hand out the build machine's own disk.
    explicit RawVolume(const QString &name);

    explicit operator bool() const { return static_cast<bool>(m_volume); }
    // Whether the open file lies on this volume, by the serial number that both tell.
    bool holds(HANDLE file) const;

    QString fileSystem() const { return m_fileSystem; }
    quint64 totalClusters() const { return m_totalClusters; }
    quint32 clusterSize() const { return m_clusterSize; } // bytes
    FileWriter writer() const { return FileWriter(m_volume.get()); }

private:
    FileHandle m_volume;
    QString m_fileSystem;
    quint32 m_serial = 0;
    quint64 m_totalClusters = 0;
    quint32 m_clusterSize = 0;
};

// Whether the volume of a path moves a head to its data, by the device's own answer.
enum class Medium { Unknown, Seeks, DoesNotSeek };

// Disk, any thread; needs no rights.
Medium mediumOf(const QString &path);

} // namespace platform
