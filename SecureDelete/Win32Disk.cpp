// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/Win32Disk.h"

#include "SecureDelete/Texts.h"
#include "SecureDelete/WriterTarget.h"
#include "platform/HandleFacts.h"
#include "platform/Paths.h"
#include "platform/ProtectedPlaces.h"

#include <QThread>

#include <cstdlib>
#include <ctime>

namespace securedelete
{

namespace
{

using platform::Guarded;
using platform::GuardedFolder;
using platform::GuardedItem;
using platform::ItemKind;
using platform::ListedItem;

class Win32File : public DoomedFile
{
public:
    Win32File(Win32Disk &disk, const Item &item) : m_disk(disk), m_item(item)
    {
        m_listed = {.name = item.name,
                    .size = item.size,
                    .lastWriteTime = item.lastWriteTime,
                    .identity = item.identity};
    }

    Target *openForWriting(Fault &fault) override;
    Target *openStream(const QString &stream, Fault &fault) override;
    quint32 linkCount() override { return m_links; }
    std::vector<Stream> streams() override;
    std::optional<std::vector<Range>> allocatedRanges() override;
    quint64 freeBytes() override { return platform::freeBytes(m_item.folder); }
    void close() override;
    Target *openVolume(VolumeFacts &facts) override;
    std::optional<std::vector<Extent>> extents() override;
    Fault rename(const QString &name) override;
    Fault erase() override;
    QString name() override { return m_removing ? m_removing->name() : m_item.name; }
    bool formerNameExists() override { return platform::fileExists(m_item.path()); }

private:
    Fault holdForRemoval();
    void readFacts();

    Win32Disk &m_disk;
    const Item m_item;
    ListedItem m_listed; // current facts, updated by each step
    quint32 m_links = 1;
    std::optional<GuardedItem> m_writing;
    platform::FileHandle m_stream;
    std::optional<WriterTarget> m_content, m_streamContent, m_volume;
    std::optional<GuardedItem> m_removing;
};

// Once the file is open, its file number identifies it. That is cheaper to compare than the full identity.
void Win32File::readFacts()
{
    if (const auto facts = platform::quickFactsOf(m_writing->handle()))
        m_links = facts->linkCount;
    m_listed.number = platform::fileNumberOf(m_writing->handle());
    if (m_listed.number)
        m_listed.identity.reset();
    else if (const auto facts = platform::factsOf(m_writing->handle()))
        m_listed.identity = facts->identity;
}

Target *Win32File::openForWriting(Fault &fault)
{
    m_writing = m_disk.folder(m_item).open(m_listed, GuardedFolder::Access::Write);
    fault = faultOf(m_writing->state());
    if (fault != Fault::None)
        return nullptr;
    readFacts();
    m_content.emplace(platform::FileWriter(m_writing->handle()));
    return &*m_content;
}

Target *Win32File::openStream(const QString &stream, Fault &fault)
{
    Guarded result = Guarded::Failed;
    m_stream = m_writing->openStream(stream, result);
    fault = faultOf(result);
    if (fault != Fault::None)
        return nullptr;
    m_streamContent.emplace(platform::FileWriter(m_stream.get()));
    return &*m_streamContent;
}

std::vector<Stream> Win32File::streams()
{
    std::vector<Stream> streams;
    for (platform::FileStream &stream : platform::alternateStreams(m_writing->handle()))
        streams.push_back({std::move(stream.name), stream.size});
    return streams;
}

std::optional<std::vector<Range>> Win32File::allocatedRanges()
{
    const auto found = platform::allocatedRanges(m_writing->handle(), m_item.size);
    if (!found)
        return std::nullopt;
    std::vector<Range> ranges;
    for (const platform::ByteRange &range : *found)
        ranges.push_back({range.offset, range.length});
    return ranges;
}

void Win32File::close()
{
    m_stream.reset();
    // Windows updates the time of a written file only when it is closed, when it can no longer be queried. So
    // the listed time is restored: the removal, and a retry after a cancel, identify the file by it.
    const bool isOpen = m_writing && m_writing->state() == Guarded::Done;
    if (isOpen && !platform::setLastWriteTime(m_writing->handle(), m_item.lastWriteTime)) {
        if (const auto now = platform::quickFactsOf(m_writing->handle())) {
            m_listed.size = now->size;
            m_listed.lastWriteTime = now->lastWriteTime;
        }
    }
    m_writing.reset();
}

Target *Win32File::openVolume(VolumeFacts &facts)
{
    platform::RawVolume &volume = m_disk.volume(m_item.folder);
    if (!volume.holds(m_writing->handle()))
        return nullptr;
    facts = {volume.fileSystem(), volume.totalClusters(), volume.clusterSize()};
    m_volume.emplace(volume.writer());
    return &*m_volume;
}

std::optional<std::vector<Extent>> Win32File::extents()
{
    const auto runs = platform::clusterRuns(m_writing->handle());
    if (!runs)
        return std::nullopt;
    std::vector<Extent> extents;
    for (const platform::ClusterRun &run : *runs)
        extents.push_back({run.virtualCluster, run.logicalCluster, run.clusters});
    return extents;
}

Fault Win32File::holdForRemoval()
{
    if (!m_removing)
        m_removing = m_disk.folder(m_item).open(m_listed, GuardedFolder::Access::Remove);
    return faultOf(m_removing->state());
}

Fault Win32File::rename(const QString &name)
{
    const Fault fault = holdForRemoval();
    return fault == Fault::None ? faultOf(m_removing->rename(name)) : fault;
}

// Tries once more if the file could not be opened before: whoever held it may have closed it.
Fault Win32File::erase()
{
    if (m_removing && m_removing->state() != Guarded::Done)
        m_removing.reset();
    const Fault fault = holdForRemoval();
    return fault == Fault::None ? faultOf(m_removing->erase()) : fault;
}

} // namespace

std::optional<Item> Win32Disk::find(const QString &root, const QString &folder, const QString &name)
{
    core::DirectoryListing found;
    platform::listItem(folder + u'\\' + name, found);
    if (found.size() == 0)
        return std::nullopt;
    return itemOf(root, folder, found.at(0));
}

void Win32Disk::list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel)
{
    m_enumerator.list(folder, out, cancel);
}

std::unique_ptr<DoomedFile> Win32Disk::file(const Item &item)
{
    return std::make_unique<Win32File>(*this, item);
}

const GuardedFolder &Win32Disk::folder(const Item &item)
{
    if (!m_root || m_root->path() != item.root) {
        m_folder.reset();
        m_root.emplace(item.root);
    }
    if (!m_folder || m_folder->path() != item.folder)
        m_folder.emplace(*m_root, item.folder);
    return *m_folder;
}

platform::RawVolume &Win32Disk::volume(const QString &path)
{
    const QString name = platform::RawVolume::nameOf(path);
    return m_volumes.try_emplace(name, name).first->second;
}

Fault Win32Disk::erase(const Item &item, ItemKind kind)
{
    return faultOf(folder(item).erase({.name = item.name,
                                       .kind = kind,
                                       .size = item.size,
                                       .lastWriteTime = item.lastWriteTime,
                                       .identity = item.identity}));
}

Fault Win32Disk::checkFolder(const Item &item)
{
    const ListedItem listed{.name = item.name, .kind = ItemKind::Folder, .identity = item.identity};
    return faultOf(folder(item).open(listed, GuardedFolder::Access::Query).state());
}

Fault Win32Disk::eraseLink(const Item &item)
{
    return erase(item, ItemKind::Link);
}

// Holds the parent folder instead, which releases the handle of this one.
Fault Win32Disk::eraseFolder(const Item &item)
{
    return erase(item, ItemKind::Folder);
}

// The guarded operations refuse any link between root and item, so the item's final path is the final path of
// the root plus the text below it.
bool Win32Disk::isProtected(const Item &item)
{
    if (m_finalRoot.isEmpty() || m_protectionRoot != item.root) {
        m_protectionRoot = item.root;
        m_finalRoot = platform::finalPath(item.root);
    }
    const QString root = m_finalRoot.isEmpty() ? item.root : m_finalRoot;
    const QString path = (root.endsWith(u'\\') ? root.chopped(1) : root) + item.path().mid(item.root.size());
    return platform::protectionOf(path, platform::protectedPlaces()) != platform::Protection::None;
}

void Win32Disk::pause()
{
    QThread::msleep(100);
}

quint32 CRandomness::seconds()
{
    return static_cast<quint32>(std::time(nullptr));
}

void CRandomness::seed(quint32 value)
{
    std::srand(value);
}

quint8 CRandomness::byte()
{
    return static_cast<quint8>(std::rand());
}

PassBuffers &processBuffers()
{
    static CRandomness randomness;
    static PassBuffers buffers(randomness, [](std::size_t bytes) {
        return std::shared_ptr<char[]>(
            static_cast<char *>(VirtualAlloc(nullptr, bytes, MEM_COMMIT, PAGE_READWRITE)), [](char *memory) {
                if (memory)
                    VirtualFree(memory, 0, MEM_RELEASE);
            });
    });
    return buffers;
}

} // namespace securedelete
