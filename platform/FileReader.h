// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>
#include <QString>

#include <memory>

namespace platform
{

// A file opened for reading; null if it cannot be opened or is not a file. Others may write, rename and
// delete it meanwhile, whereas QFile::open() prevents renaming and moving to the recycle bin. The device has
// no file name. Any thread.
std::unique_ptr<QIODevice> openShared(const QString &path);

// Reads a file from start to end. Others may write, rename and delete it meanwhile. One thread at a time.
class FileReader
{
public:
    virtual ~FileReader() = default;

    // Null if it cannot be opened. Reading a cloud file does not keep it on the disk permanently.
    static std::unique_ptr<FileReader> open(const QString &path);

    // Returns the number of bytes read, 0 at the end, -1 on an error.
    virtual qint64 read(char *to, qint64 atMost) = 0;
};

} // namespace platform
