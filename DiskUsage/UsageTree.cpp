// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/UsageTree.h"

#include "DiskUsage/FolderModel.h"

namespace diskusage
{

UsageNode usageOf(const QString &name, quint64 bytes, const QString &maxData,
                  const core::FileTypeMatcher &matcher)
{
    UsageNode node{name, bytes, UsageNode::Kind::Folder, -1, {}};
    quint64 known = 0;
    for (const LargestChildren::Child &child : LargestChildren::parse(maxData)) {
        if (child.size <= 0)
            continue;
        UsageNode part{child.name, static_cast<quint64>(child.size), UsageNode::Kind::Folder, -1, {}};
        if (child.kind == LargestChildren::File) {
            part.kind = UsageNode::Kind::File;
            const std::vector<int> &categories = matcher.match(child.name);
            part.category = categories.empty() ? -1 : categories.front();
        }
        known += part.bytes;
        node.children.push_back(std::move(part));
    }
    if (known < bytes)
        node.children.push_back({QString(), bytes - known, UsageNode::Kind::Rest, -1, {}});
    return node;
}

UsageNode usageTree(const FolderItem &folder, const core::FileTypeMatcher &matcher, int levels,
                    quint64 smallest)
{
    const Folder &own = folder.folder();
    UsageNode node = usageOf(own.name, own.bytes, own.maxData, matcher);
    if (levels <= 1)
        return node;
    // A single pass over the rows, of which there may be many; sizes are compared before names.
    for (int row = 0; row < folder.rowCount(); ++row) {
        const FolderItem &child = *folder.childFolder(row);
        const Folder &inner = child.folder();
        for (UsageNode &part : node.children)
            if (part.bytes == inner.bytes && part.bytes >= smallest && part.kind == UsageNode::Kind::Folder &&
                part.name == inner.name)
                part = usageTree(child, matcher, levels - 1, smallest);
    }
    return node;
}

} // namespace diskusage
