// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileTypes.h"

#include <QString>

#include <vector>

class FolderItem;

namespace diskusage
{

// A part of the usage graph.
struct UsageNode {
    enum class Kind { File, Folder, Rest };

    QString name; // empty for the rest
    quint64 bytes = 0;
    Kind kind = Kind::File;
    int category = -1;               // of a file: index into the table, -1 for none
    std::vector<UsageNode> children; // of a folder, largest first; the rest is the last

    bool operator==(const UsageNode &) const = default;
};

// A folder's largest children as its MaxData text lists them, and what is left of its bytes. `matcher` gives
// files their category.
UsageNode usageOf(const QString &name, quint64 bytes, const QString &maxData,
                  const core::FileTypeMatcher &matcher);

// The same for a row of the tree, and for the folders among its largest children down to `levels` levels,
// leaving out the insides of those below `smallest` bytes.
UsageNode usageTree(const FolderItem &folder, const core::FileTypeMatcher &matcher, int levels,
                    quint64 smallest = 0);

} // namespace diskusage
