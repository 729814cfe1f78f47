// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <windows.h>

#include <optional>
#include <vector>

// File system functions for overwriting, on a handle owned by someone else. Do disk I/O; any thread.
namespace platform
{

// Never reads and never closes the handle.
class FileWriter
{
public:
    FileWriter() = default;
    explicit FileWriter(HANDLE file) : m_file(file) {}

    bool moveTo(quint64 position);
    bool moveBack(quint64 bytes); // relative to the current position; any distance
    // Returns the number of bytes written, at most 2^32 - 1; 0 on failure.
    quint64 write(const char *data, quint64 bytes);

private:
    HANDLE m_file = INVALID_HANDLE_VALUE;
};

// FILETIME. For a file opened for writing; closing it does not update its time any more.
bool setLastWriteTime(HANDLE file, quint64 time);

struct FileStream {
    QString name; // ":name:$DATA"
    quint64 size = 0;
};

// The alternate data streams; empty if the file system does not support them.
std::vector<FileStream> alternateStreams(HANDLE file);

struct ByteRange {
    quint64 offset = 0;
    quint64 length = 0;
};

// The allocated ranges of a sparse file of that size; nullopt if the file system does not provide them.
std::optional<std::vector<ByteRange>> allocatedRanges(HANDLE file, quint64 size);

// A run of clusters: `virtualCluster` in the file, `logicalCluster` on the volume, -1 if not allocated.
struct ClusterRun {
    qint64 virtualCluster = 0;
    qint64 logicalCluster = -1;
    qint64 clusters = 0;
};

// As returned by the file system, unchecked: some return wrong values. nullopt if it refuses, or if the file
// has no clusters of its own.
std::optional<std::vector<ClusterRun>> clusterRuns(HANDLE file);

// Free for this user on the folder's volume; 0 if unknown.
quint64 freeBytes(const QString &folder);

} // namespace platform
