// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>

namespace platform
{

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
