// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/SiblingCheck.h"

#include "platform/Win32Enumerator.h"

namespace diskusage
{

QStringList siblingsLeftOut(const QString &folder, const core::CancelFlag &cancel)
{
    const qsizetype cut = folder.lastIndexOf(QLatin1Char('\\'));
    if (cut < 0)
        return {};
    const QStringView name = QStringView(folder).sliced(cut + 1);
    platform::Win32Enumerator enumerator;
    core::DirectoryListing listing;
    enumerator.list(folder.first(cut), listing, cancel);
    QStringList siblings;
    for (std::size_t i = 0; i < listing.size() && !cancel.isSet(); ++i) {
        const core::DirectoryEntry entry = listing.at(i);
        if (entry.isDirectory() && entry.name.size() > name.size() &&
            entry.name.startsWith(name, Qt::CaseInsensitive))
            siblings.append(folder.first(cut + 1) + entry.name.toString());
    }
    return siblings;
}

} // namespace diskusage

void SiblingCheck::run()
{
    for (const QString &folder : std::as_const(m_folders))
        for (const QString &sibling : diskusage::siblingsLeftOut(folder, cancelFlag()))
            if (!m_folders.contains(sibling, Qt::CaseInsensitive) && !m_siblings.contains(sibling))
                m_siblings.append(sibling);
}
