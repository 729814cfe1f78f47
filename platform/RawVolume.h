// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileWriter.h"
#include "platform/Handle.h"

#include <QString>

namespace platform
{

// A local volume opened as a device, for writing to clusters whose numbers the file system reported. Windows
// allows that only to administrators, and even to them not for most of a mounted volume; then nothing is
// open.
class RawVolume
{
public:
    // "\\?\Volume{...}\" of the path's volume, by mount point and not by drive letter; empty for a share.
    static QString nameOf(const QString &path);

    // Does disk I/O. Never opened under Wine, which would open the build machine's own disk.
    explicit RawVolume(const QString &name);

    explicit operator bool() const { return static_cast<bool>(m_volume); }
    // Whether the open file is on this volume, by the serial number.
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

// Whether the path's volume has seek times (a hard disk), as reported by the device.
enum class Medium { Unknown, Seeks, DoesNotSeek };

// Does disk I/O; any thread; needs no rights.
Medium mediumOf(const QString &path);

} // namespace platform
