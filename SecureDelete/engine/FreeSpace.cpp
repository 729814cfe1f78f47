// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/engine/FreeSpace.h"

#include <QRandomGenerator>

#include <algorithm>
#include <vector>

namespace securedelete
{

namespace
{

constexpr std::size_t pieceSize = 1 << 20;

} // namespace

FreeSpaceResult wipeFreeSpace(FreeSpaceFolder &folder, const FreeSpaceOptions &options,
                              FreeSpaceListener &listener, const core::CancelFlag &cancel)
{
    const quint64 spared = options.spared;
    FreeSpaceResult result;
    QRandomGenerator generator(options.seed);
    std::vector<quint32> piece(pieceSize / sizeof(quint32));
    const quint64 atFirst = folder.freeBytes();
    const quint64 total = atFirst - std::min(spared, atFirst);
    Target *file = nullptr;
    quint64 inFile = 0;
    int files = 0;
    while (!cancel.isSet() && !result.filled) {
        const quint64 free = folder.freeBytes();
        if (free <= spared) {
            result.filled = true;
            break;
        }
        if (!file || inFile >= options.maxFileSize) {
            file = folder.newFile(++files);
            inFile = 0;
            if (!file)
                break;
        }
        generator.fillRange(piece.data(), static_cast<qsizetype>(piece.size()));
        const quint64 written = file->write(reinterpret_cast<const char *>(piece.data()),
                                            std::min<quint64>(pieceSize, free - spared));
        // A quota, or another program is filling the volume at the same time.
        result.filled = written == 0;
        inFile += written;
        result.bytesWritten += written;
        listener.spaceFilled(result.bytesWritten, total);
    }
    result.removed = folder.removeAll();
    return result;
}

} // namespace securedelete
