// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileTypes.h"

#include <QString>

#include <vector>

class FolderItem;

namespace diskusage
{

// A node of the usage graph.
struct UsageNode {
    enum class Kind { File, Folder, Rest };

    QString name; // empty for the rest
    quint64 bytes = 0;
    Kind kind = Kind::File;
    int category = -1;               // for files: index into the table, -1 for none
    std::vector<UsageNode> children; // for folders, largest first; the rest is last

    bool operator==(const UsageNode &) const = default;
};

// A folder's largest children as listed in its MaxData text, and the rest of its bytes. `matcher` determines
// the category of files.
UsageNode usageOf(const QString &name, quint64 bytes, const QString &maxData,
                  const core::FileTypeMatcher &matcher);

// The same for a row of the tree, nested for the folders among its largest children down to `levels` levels.
// Folders below `smallest` bytes are not expanded.
UsageNode usageTree(const FolderItem &folder, const core::FileTypeMatcher &matcher, int levels,
                    quint64 smallest = 0);

} // namespace diskusage
