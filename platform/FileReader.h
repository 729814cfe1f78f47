// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>
#include <QString>

#include <memory>

namespace platform
{

// A file that is open for reading, null when it cannot be opened or is none. Others may write, rename and
// delete it meanwhile; while QFile::open() has a file, nobody can rename it or move it to the recycle bin.
// The device has no file name. Any thread.
std::unique_ptr<QIODevice> openShared(const QString &path);

// Reads a file from its beginning to its end. Others may write, rename and delete it meanwhile. One thread at
// a time.
class FileReader
{
public:
    virtual ~FileReader() = default;

    // Null when it cannot be opened. A file in a cloud store is not fetched for good by being read.
    static std::unique_ptr<FileReader> open(const QString &path);

    // The number of bytes read, 0 at the end, -1 on an error.
    virtual qint64 read(char *to, qint64 atMost) = 0;
};

} // namespace platform
