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

// How the comparison reaches files. Called on the comparing thread only.
class ContentReader
{
public:
    class File
    {
    public:
        virtual ~File() = default;
        // Reads on from where the last call ended: the number of bytes (at least one, at most `atMost`), 0 at
        // the end, -1 on an error.
        virtual qint64 read(char *to, qint64 atMost) = 0;
    };

    virtual ~ContentReader() = default;
    // core::FileAttribute bits, found without opening the file; empty when it is not there.
    virtual std::optional<quint32> attributes(const QString &path) = 0;
    // Null when it cannot be opened.
    virtual std::unique_ptr<File> open(const QString &path) = 0;
};

enum class ContentState : quint8 {
    NotCompared, // cancelled, or no member was left to compare it with
    Reference,   // what the others were compared with
    Identical,   // every byte equals the reference's
    Different,
    Unreadable,
    Placeholder // not opened
};

// Bytes compared so far of all that there are to compare; the second number may change while the comparison
// runs.
using ContentProgress = std::function<void(quint64 done, quint64 total)>;

// Compares files byte by byte with the first of them, or where that one cannot be read or is a placeholder,
// with the first one that can. Returns a state for each path. At most 17 files are open at a time, with one
// MiB in memory for each. `fileSize` is the size that each was found with; it serves the progress alone.
std::vector<ContentState> compareContents(const QStringList &paths, quint64 fileSize, ContentReader &reader,
                                          const ContentProgress &progress, const core::CancelFlag &cancel);

} // namespace duplicates
