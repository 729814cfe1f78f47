// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/engine/Siblings.h"

namespace diskusage
{

QStringList siblingsLeftOut(const QString &folder, core::DirectoryEnumerator &disk,
                            const core::CancelFlag &cancel)
{
    const qsizetype cut = folder.lastIndexOf(QLatin1Char('\\'));
    if (cut < 0)
        return {};
    const QStringView name = QStringView(folder).sliced(cut + 1);
    core::DirectoryListing listing;
    disk.list(folder.first(cut), listing, cancel);
    QStringList siblings;
    for (std::size_t i = 0; i < listing.size() && !cancel.isSet(); ++i) {
        const core::DirectoryEntry entry = listing.at(i);
        if (entry.isDirectory() && entry.name.size() > name.size() &&
            entry.name.startsWith(name, Qt::CaseInsensitive))
            siblings.append(folder.first(cut + 1) + entry.name.toString());
    }
    return siblings;
}

QStringList siblingsOfAll(const QStringList &folders, const SiblingFinder &find,
                          core::DirectoryEnumerator &disk, const core::CancelFlag &cancel)
{
    QStringList found;
    for (const QString &folder : folders) {
        const QStringList siblings = find(folder, disk, cancel);
        for (const QString &sibling : siblings)
            if (!folders.contains(sibling, Qt::CaseInsensitive) && !found.contains(sibling))
                found.append(sibling);
    }
    return found;
}

} // namespace diskusage
