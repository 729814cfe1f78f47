// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <windows.h>

#include <optional>
#include <vector>

// What the overwriting of a file needs from the system, on a handle that somebody else owns. Disk, any
// thread.
namespace platform
{

// Reads nothing and closes nothing.
class FileWriter
{
public:
    FileWriter() = default;
    explicit FileWriter(HANDLE file) : m_file(file) {}

    bool moveTo(quint64 position);
    bool moveBack(quint64 bytes); // from where it stands; any distance
    // The bytes that were written, at most 2^32 - 1; 0 when it failed.
    quint64 write(const char *data, quint64 bytes);

private:
    HANDLE m_file = INVALID_HANDLE_VALUE;
};

// FILETIME. Of a file that is open for writing; what closing it would make of its time does not count any
// more.
bool setLastWriteTime(HANDLE file, quint64 time);

struct FileStream {
    QString name; // ":name:$DATA"
    quint64 size = 0;
};

// The alternate data streams; none where the file system has none.
std::vector<FileStream> alternateStreams(HANDLE file);

struct ByteRange {
    quint64 offset = 0;
    quint64 length = 0;
};

// Where a sparse file of that size has bytes of its own; empty when the file system does not tell.
std::optional<std::vector<ByteRange>> allocatedRanges(HANDLE file, quint64 size);

// A run of clusters: `virtualCluster` of the file, `logicalCluster` of the volume, -1 where there is none.
struct ClusterRun {
    qint64 virtualCluster = 0;
    qint64 logicalCluster = -1;
    qint64 clusters = 0;
};

// As the file system answers, unchecked: not every one tells the truth. Empty when it refuses, and when the
// file has no clusters of its own.
std::optional<std::vector<ClusterRun>> clusterRuns(HANDLE file);

// Free for this user on the volume of the folder; 0 when unknown.
quint64 freeBytes(const QString &folder);

} // namespace platform
