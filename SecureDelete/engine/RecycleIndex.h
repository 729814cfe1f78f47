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

// What the index file of a recycle bin ("$I" and the rest of the item's name) tells of one removed item. For
// showing only: the bytes may be anybody's, and the path may name anything.
struct RemovedItem {
    QString originalPath;
    quint64 size = 0;
    quint64 removedTime = 0; // FILETIME
    bool operator==(const RemovedItem &) const = default;
};

// The largest index file there can be: 28 bytes and a path of 32,767 characters with its end.
constexpr qsizetype maxIndexSize = 28 + 2 * 32'768;

// Version 1 (up to Windows 8, a path of 260 characters) and version 2 (Windows 10). Empty for anything else.
std::optional<RemovedItem> parseRecycleIndex(QByteArrayView bytes);

// An item of a recycle bin's folder: a file or folder ("$R..."), the index beside it ("$I..."), or one of
// them alone.
struct BinItem {
    core::DirectoryEntry content; // without a name when it is missing
    core::DirectoryEntry index;   // the same
    QString contentName;
    QString indexName;
    std::optional<RemovedItem> removed; // empty without a readable index

    bool isFolder() const { return content.isDirectory(); }
    // What the bin says, or its folder when the bin says nothing.
    quint64 size() const { return removed ? removed->size : content.size; }
};

// Pairs the entries of a bin's folder, in their order. desktop.ini, which makes the folder a bin, is none of
// them. `read` gives the bytes of an index file, at most maxIndexSize.
std::vector<BinItem> binItems(const core::DirectoryListing &listing,
                              const std::function<QByteArray(const QString &name)> &read);

} // namespace securedelete
