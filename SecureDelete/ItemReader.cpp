// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/ItemReader.h"

#include "SecureDelete/Texts.h"
#include "SecureDelete/Win32Disk.h"
#include "core/FolderWalk.h"
#include "platform/HandleFacts.h"
#include "platform/Paths.h"

#include <QElapsedTimer>

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
    Win32Disk disk;
    std::vector<ListRow> folders;
    std::vector<ListRow> rows;
    int id = m_firstId;
    const auto report = [&] {
        if (!rows.empty())
            deliver([this, told = std::exchange(rows, {})] { emit rowsRead(told); });
    };
    for (const QString &path : m_paths) {
        if (stopRequested())
            return;
        std::optional<ListRow> row = read(disk, core::walkRoot(path));
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
            report();
    }
    report();
    countAll(folders);
}

// Files of one folder come in sequence, so that what is queried per folder is cached for the next file.
std::optional<ListRow> ItemReader::read(Win32Disk &disk, const QString &path)
{
    const QString shown = platform::shownPath(path);
    const qsizetype cut = shown.lastIndexOf(u'\\');
    if (cut < 0 || platform::isDriveRoot(shown))
        return std::nullopt;
    const QString folder = shown.left(cut);
    const std::optional<Item> item = disk.find(folder, folder, shown.mid(cut + 1));
    if (!item)
        return std::nullopt;
    ListRow row;
    row.row = {*item, !item->isFolder()};
    row.remarks = remarksOf(disk, row);
    row.medium = mediumOf(folder);
    row.counted = row.row.isFile || item->isLink();
    row.files = row.row.isFile ? 1 : 0;
    row.bytes = item->isLink() ? 0 : item->size;
    return row;
}

platform::Medium ItemReader::mediumOf(const QString &folder)
{
    if (folder != m_folder || m_folder.isEmpty())
        m_medium = m_mediumOf(folder);
    m_folder = folder;
    return m_medium;
}

// Also records the identity if the item can be opened. Cloud placeholders are not opened, since that would
// download them.
Remarks ItemReader::remarksOf(Win32Disk &disk, ListRow &row) const
{
    constexpr quint32 transformed = 0x200 | 0x800 | 0x4000; // sparse, compressed, encrypted
    Item &item = row.row.item;
    Remarks remarks;
    remarks.setFlag(Remark::Link, item.isLink());
    remarks.setFlag(Remark::Transformed, !item.isFolder() && (item.attributes & transformed) != 0);
    remarks.setFlag(Remark::InCloud, core::isPlaceholder(item.attributes));
    remarks.setFlag(Remark::CloudFolder, liesInCloudFolder(item.path()));
    remarks.setFlag(Remark::ReadOnly, !item.isFolder() && (item.attributes & core::AttributeReadOnly) != 0);
    remarks.setFlag(Remark::Protected, disk.isProtected(item));
    if (remarks.testFlag(Remark::InCloud) || item.isLink())
        return remarks;
    const platform::GuardedFolder &folder = disk.folder(item);
    using Access = platform::GuardedFolder::Access;
    const platform::ListedItem listed{item.name,
                                      item.isFolder() ? platform::ItemKind::Folder : platform::ItemKind::File,
                                      item.size, item.lastWriteTime};
    platform::GuardedItem opened = folder.open(listed, item.isFolder() ? Access::Query : Access::Remove);
    remarks.setFlag(Remark::Elsewhere, opened.state() == Guarded::ThroughLink);
    remarks.setFlag(Remark::InUse, opened.state() == Guarded::InUse);
    remarks.setFlag(Remark::Unreadable, opened.state() == Guarded::Denied);
    if (opened.state() != Guarded::Done)
        opened = folder.open(listed, Access::Query);
    item.identity = folder.identityOf(opened);
    if (opened.state() != Guarded::Done || item.isFolder())
        return remarks;
    if (const auto facts = platform::quickFactsOf(opened.handle()))
        remarks.setFlag(Remark::OtherNames, facts->linkCount > 1);
    return remarks;
}

void ItemReader::countAll(const std::vector<ListRow> &folders)
{
    constexpr int pause = 50; // ms
    std::vector<FolderCount> counts;
    QElapsedTimer sinceReport;
    for (const ListRow &row : folders) {
        counts.push_back(countFolder(core::walkRoot(row.row.item.path()), cancelFlag()));
        counts.back().id = row.id;
        if (stopRequested())
            return;
        if (&row != &folders.back() && sinceReport.isValid() && sinceReport.elapsed() < pause)
            continue;
        deliver([this, told = std::exchange(counts, {})] { emit foldersCounted(told); });
        sinceReport.start();
    }
}

FolderCount countFolder(const QString &path, const core::CancelFlag &cancel)
{
    platform::Win32Enumerator enumerator;
    Count count;
    core::walkFolders(path, enumerator, count, cancel);
    return {0, count.files, count.bytes, count.complete};
}

} // namespace securedelete
