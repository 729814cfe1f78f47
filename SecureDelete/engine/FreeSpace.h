// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Disk.h"
#include "core/CancelFlag.h"

namespace securedelete
{

// The folder whose files fill a volume's free space.
class FreeSpaceFolder
{
public:
    virtual ~FreeSpaceFolder() = default;
    virtual quint64 freeBytes() = 0;
    // Creates a new empty file, open until the next call; null if that fails.
    virtual Target *newFile(int number) = 0;
    // Closes and deletes all files and the folder. False if something remains.
    virtual bool removeAll() = 0;
};

class FreeSpaceListener
{
public:
    virtual ~FreeSpaceListener() = default;
    virtual void spaceFilled(quint64 bytes, quint64 total) = 0;
};

struct FreeSpaceResult {
    quint64 bytesWritten = 0;
    bool filled = false;  // the volume was almost full at the end
    bool removed = false; // none of our files are left on it
};

struct FreeSpaceOptions {
    quint64 spared = 64 << 20;              // left free, so that other programs do not run out of space
    quint64 maxFileSize = quint64{1} << 30; // a quarter of FAT32's limit
    quint32 seed = 0;                       // of the random data
};

// Fills the free space of a volume with random bytes and frees it again, even when cancelled.
FreeSpaceResult wipeFreeSpace(FreeSpaceFolder &folder, const FreeSpaceOptions &options,
                              FreeSpaceListener &listener, const core::CancelFlag &cancel);

} // namespace securedelete
