// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace duplicates
{

// File access for the comparison. Called on the comparing thread only.
class ContentReader
{
public:
    class File
    {
    public:
        virtual ~File() = default;
        // Reads sequentially; returns the number of bytes (1 to `atMost`), 0 at the end, -1 on an error.
        virtual qint64 read(char *to, qint64 atMost) = 0;
    };

    virtual ~ContentReader() = default;
    // core::FileAttribute bits, determined without opening the file; nullopt if it does not exist.
    virtual std::optional<quint32> attributes(const QString &path) = 0;
    // Null if it cannot be opened.
    virtual std::unique_ptr<File> open(const QString &path) = 0;
};

enum class ContentState : quint8 {
    NotCompared, // cancelled, or there was no other member left to compare with
    Reference,   // the file that the others were compared with
    Identical,   // identical to the reference
    Different,
    Unreadable,
    Placeholder // not opened
};

// Bytes compared so far, and in total; the total may change during the comparison.
using ContentProgress = std::function<void(quint64 done, quint64 total)>;

// Compares files byte by byte with the first one, or, if that cannot be read or is a placeholder, with the
// first one that can. Returns a state per path. At most 17 files are open at a time, with a buffer of one MiB
// each. `fileSize` is the size found by the scan; only used for progress.
std::vector<ContentState> compareContents(const QStringList &paths, quint64 fileSize, ContentReader &reader,
                                          const ContentProgress &progress, const core::CancelFlag &cancel);

} // namespace duplicates
