// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Disk.h"
#include "core/CancelFlag.h"

namespace securedelete
{

// The folder of our own that fills a volume's free space.
class FreeSpaceFolder
{
public:
    virtual ~FreeSpaceFolder() = default;
    virtual quint64 freeBytes() = 0;
    // A new file of the folder, open and empty, until the next call; null when none can be made.
    virtual Target *newFile(int number) = 0;
    // Closes and removes every file of the folder, and the folder. False when something stayed.
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
    bool filled = false;  // the volume was nearly full in the end
    bool removed = false; // nothing of ours is left on it
};

struct FreeSpaceOptions {
    quint64 spared = 64 << 20;              // left free, so that nothing else runs out of room
    quint64 maxFileSize = quint64{1} << 30; // FAT32 ends at four times this
    quint32 seed = 0;                       // makes the bytes
};

// Fills the free space of a volume with random bytes and frees it again, also when it is cancelled.
FreeSpaceResult wipeFreeSpace(FreeSpaceFolder &folder, const FreeSpaceOptions &options,
                              FreeSpaceListener &listener, const core::CancelFlag &cancel);

} // namespace securedelete
