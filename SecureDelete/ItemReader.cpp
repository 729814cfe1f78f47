// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/ItemReader.h"

#include "SecureDelete/Texts.h"
#include "SecureDelete/Win32Disk.h"
#include "core/FolderWalk.h"
#include "platform/Paths.h"

namespace securedelete
{

namespace
{

using platform::Guarded;

class Count : public core::WalkVisitor
{
public:
    void rootCounted(int) override {}
    void entryMet() override {}
    bool acceptFolder(const QString &, const core::DirectoryEntry &entry) override
    {
        return !entry.mayBeLink();
    }
    void enterFolder(const QString &, QStringView, int, FolderState state) override
    {
        complete = complete && state == FolderState::Listed;
    }
    void file(const QString &, const core::DirectoryEntry &entry) override
    {
        ++files;
        bytes += entry.size;
    }
    void leaveFolder() override {}

    quint64 files = 0;
    quint64 bytes = 0;
    bool complete = true;
};

bool liesInCloudFolder(const QString &path)
{
    for (const char *name : {"OneDrive", "OneDriveConsumer", "OneDriveCommercial"}) {
        const QString folder = platform::shownPath(qEnvironmentVariable(name));
        if (!folder.isEmpty() && path.startsWith(folder + u'\\', Qt::CaseInsensitive))
            return true;
    }
    return false;
}

} // namespace

ItemReader::ItemReader(QStringList paths, int firstId, MediumOf mediumOf)
    : WorkerThread(LowPriority),
      m_paths(std::move(paths)),
      m_firstId(firstId),
      m_mediumOf(std::move(mediumOf))
{
}

void ItemReader::work()
{
    std::vector<ListRow> folders;
    std::vector<ListRow> rows;
    int id = m_firstId;
    const auto tell = [&] {
        if (!rows.empty())
            deliver([this, told = std::exchange(rows, {})] { emit rowsRead(told); });
    };
    for (const QString &path : m_paths) {
        if (stopRequested())
            return;
        std::optional<ListRow> row = read(core::walkRoot(path));
        if (!row) {
            m_refused.append(path);
            continue;
        }
        row->id = id++;
        rows.push_back(*row);
        if (!row->row.isFile && !row->row.item.isLink())
            folders.push_back(*row);
        constexpr std::size_t rowsAtOnce = 500;
        if (rows.size() == rowsAtOnce)
            tell();
    }
    tell();
    for (const ListRow &row : folders)
        count(row);
}

std::optional<ListRow> ItemReader::read(const QString &path)
{
    const QString shown = platform::shownPath(path);
    const qsizetype cut = shown.lastIndexOf(u'\\');
    if (cut < 0 || platform::isDriveRoot(shown))
        return std::nullopt;
    const QString folder = shown.left(cut);
    std::optional<Item> item = Win32Disk().find(folder, folder, shown.mid(cut + 1));
    if (!item)
        return std::nullopt;
    ListRow row;
    quint32 links = 1;
    // Opening it would fetch a file that is kept in a cloud store.
    if (!core::isPlaceholder(item->attributes) && !item->isLink()) {
        if (const auto facts = platform::fileFacts(shown)) {
            item->identity = facts->identity;
            links = item->isFolder() ? 1 : facts->linkCount;
        }
    }
    row.row = {*item, !item->isFolder()};
    row.remarks = remarksOf(*item, links);
    row.medium = m_mediumOf(folder);
    row.counted = row.row.isFile || item->isLink();
    row.files = row.row.isFile ? 1 : 0;
    row.bytes = item->isLink() ? 0 : item->size;
    return row;
}

Remarks ItemReader::remarksOf(const Item &item, quint32 links) const
{
    constexpr quint32 transformed = 0x200 | 0x800 | 0x4000; // sparse, compressed, encrypted
    Remarks remarks;
    remarks.setFlag(Remark::Link, item.isLink());
    remarks.setFlag(Remark::OtherNames, links > 1);
    remarks.setFlag(Remark::Transformed, !item.isFolder() && (item.attributes & transformed) != 0);
    remarks.setFlag(Remark::InCloud, core::isPlaceholder(item.attributes));
    remarks.setFlag(Remark::CloudFolder, liesInCloudFolder(item.path()));
    remarks.setFlag(Remark::ReadOnly, !item.isFolder() && (item.attributes & core::AttributeReadOnly) != 0);
    Win32Disk disk;
    remarks.setFlag(Remark::Protected, disk.isProtected(item));
    if (item.isFolder() || remarks.testFlag(Remark::InCloud) || item.isLink())
        return remarks;
    const platform::ListedItem listed{item.name, platform::ItemKind::File, item.size, item.lastWriteTime,
                                      item.identity};
    const Guarded state = disk.folder(item).open(listed, platform::GuardedFolder::Access::Remove).state();
    remarks.setFlag(Remark::InUse, state == Guarded::InUse);
    remarks.setFlag(Remark::Elsewhere, state == Guarded::ThroughLink);
    remarks.setFlag(Remark::Unreadable, state == Guarded::Denied);
    return remarks;
}

void ItemReader::count(const ListRow &row)
{
    if (stopRequested())
        return;
    platform::Win32Enumerator enumerator;
    Count count;
    core::walkFolders(core::walkRoot(row.row.item.path()), enumerator, count, cancelFlag());
    if (!stopRequested())
        deliver(
            [this, id = row.id, count] { emit folderCounted(id, count.files, count.bytes, count.complete); });
}

} // namespace securedelete
