// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/BinReader.h"

#include "SecureDelete/ItemReader.h"
#include "platform/Win32Enumerator.h"

#include <QFile>

namespace securedelete
{

namespace
{

QByteArray readIndex(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(maxIndexSize + 1) : QByteArray();
}

} // namespace

void BinReader::work()
{
    for (const QString &folder : m_folders()) {
        if (stopRequested())
            return;
        ++m_bins;
        read(folder);
    }
}

// The root is the drive's, so that deletion refuses any link between the drive root and the item.
void BinReader::read(const QString &folder)
{
    platform::Win32Enumerator enumerator;
    core::DirectoryListing listing;
    enumerator.list(folder, listing, cancelFlag());
    const QString root = folder.left(folder.indexOf(u'\\'));
    const auto rowOf = [&](core::DirectoryEntry entry, const QString &name) {
        entry.name = name;
        return ShredRow{itemOf(root, folder, entry), !entry.isDirectory()};
    };
    const auto items =
        binItems(listing, [&](const QString &name) { return readIndex(folder + u'\\' + name); });
    for (const BinItem &item : items) {
        BinRow row;
        const bool hasContent = !item.contentName.isEmpty();
        row.content = hasContent ? rowOf(item.content, item.contentName) : rowOf(item.index, item.indexName);
        if (hasContent && !item.indexName.isEmpty())
            row.index = rowOf(item.index, item.indexName);
        row.name = row.content.item.name;
        row.size = item.size();
        if (item.removed) {
            const QString &path = item.removed->originalPath;
            const qsizetype cut = path.lastIndexOf(u'\\');
            row.name = path.mid(cut + 1);
            row.originalFolder = path.left(qMax<qsizetype>(cut, 0));
            row.removedTime = item.removed->removedTime;
        }
        if (!row.content.isFile && !row.content.item.isLink())
            row.files = countFolder(row.content.item.path(), cancelFlag()).files;
        m_rows.push_back(std::move(row));
    }
}

} // namespace securedelete
