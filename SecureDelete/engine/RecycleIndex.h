// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/DirectoryEnumerator.h"

#include <QByteArrayView>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace securedelete
{

// What a recycle bin's index file ("$I" plus the rest of the item's name) says about a removed item. For
// display only: the bytes are untrusted, and the path may name anything.
struct RemovedItem {
    QString originalPath;
    quint64 size = 0;
    quint64 removedTime = 0; // FILETIME
    bool operator==(const RemovedItem &) const = default;
};

// Upper limit for an index file: 28 bytes and a path of 32,767 characters with its terminator.
constexpr qsizetype maxIndexSize = 28 + 2 * 32'768;

// Reads version 1 (before Windows 10, fixed 260 characters) and version 2 (Windows 10). nullopt for anything
// else.
std::optional<RemovedItem> parseRecycleIndex(QByteArrayView bytes);

// An item in a recycle bin's folder: a file or folder ("$R..."), its index file ("$I..."), or only one of
// them.
struct BinItem {
    core::DirectoryEntry content; // its name is empty if it is missing
    core::DirectoryEntry index;   // likewise
    QString contentName;
    QString indexName;
    std::optional<RemovedItem> removed; // nullopt without a readable index file

    bool isFolder() const { return content.isDirectory(); }
    // The size recorded in the index file, or the listed size without one.
    quint64 size() const { return removed ? removed->size : content.size; }
};

// Pairs the entries of a bin's folder, keeping their order. Skips desktop.ini, which marks the folder as a
// bin. `read` returns the bytes of an index file, at most maxIndexSize.
std::vector<BinItem> binItems(const core::DirectoryListing &listing,
                              const std::function<QByteArray(const QString &name)> &read);

} // namespace securedelete
