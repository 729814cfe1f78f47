// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/Scan.h"

#include "TrackCleaner/engine/DatabaseSigns.h"
#include "core/FolderWalk.h"

#include <QStringBuilder>

#include <algorithm>
#include <utility>

namespace tracks
{

namespace
{

constexpr quint64 day = quint64{24} * 60 * 60 * 10'000'000; // FILETIME

// Collects the traces of one item from one of its folders.
class Collector : public core::WalkVisitor
{
public:
    Collector(Item item, const FileSource &source, const ScanOptions &options, const ScanWorld &world,
              ScanListener &listener, ItemTraces &found, int &total)
        : m_item(item),
          m_source(source),
          m_options(options),
          m_world(world),
          m_listener(listener),
          m_found(found),
          m_total(total)
    {
    }

    void rootCounted(int) override {}
    void entryMet() override {}

    // Links are not followed: their targets are not traces of this location.
    bool acceptFolder(const QString &, const core::DirectoryEntry &entry) override
    {
        return m_source.recursive && !entry.mayBeLink();
    }

    void enterFolder(const QString &path, QStringView, int depth, FolderState state) override;
    void file(const QString &folder, const core::DirectoryEntry &entry) override;
    void leaveFolder() override;

private:
    struct Frame {
        quint32 folder; // index in the list
        DatabaseSigns signs;
        std::vector<std::size_t> traces;
    };

    Keep keepOf(const core::DirectoryEntry &entry, const QString &folder) const;

    Item m_item;
    const FileSource &m_source;
    const ScanOptions &m_options;
    const ScanWorld &m_world;
    ScanListener &m_listener;
    ItemTraces &m_found;
    int &m_total;
    std::vector<Frame> m_frames;
};

void Collector::enterFolder(const QString &path, QStringView, int depth, FolderState state)
{
    m_listener.folderEntered(path);
    m_frames.push_back({m_found.files.addFolder(path, m_source.trustedRoot), DatabaseSigns(path), {}});
    if (state == FolderState::ListedInPart)
        m_frames.back().signs.assumeLevelDb();
    if (state != FolderState::Unreadable)
        return;
    if (depth > 0) {
        ++m_found.unreadableFolders;
    } else if (m_world.probe.facts(path)) { // a missing folder holds no traces; an existing one may
        m_found.obstacle = Obstacle::NeedsAdministrator;
        m_found.obstacleFolder = m_source.folder;
    }
}

void Collector::file(const QString &folder, const core::DirectoryEntry &entry)
{
    Frame &frame = m_frames.back();
    frame.signs.meet(entry.name);
    // A link to a file, as Windows reports it. Neither the link nor its target is a trace.
    constexpr quint32 nameSurrogate = 0x20000000; // winnt.h, IsReparseTagNameSurrogate
    if ((entry.attributes & core::AttributeReparsePoint) != 0 && (entry.reparseTag & nameSurrogate) != 0)
        return;
    if (m_source.pattern == Pattern::Logs && !isLogName(entry.name))
        return;
    frame.traces.push_back(m_found.files.size());
    m_found.files.add(frame.folder, entry, keepOf(entry, folder));
    m_found.bytes += entry.size;
    m_listener.traceFound(++m_total);
}

Keep Collector::keepOf(const core::DirectoryEntry &entry, const QString &folder) const
{
    // Uses the creation time too: a file copied here today may have an old write time.
    const quint64 age = std::max(entry.lastWriteTime, entry.creationTime);
    if (m_item == Item::TempFiles && m_options.keepUsedToday && age + day > m_options.now)
        return Keep::UsedToday;
    if (m_source.privileged && !m_world.rights.mayRemove(QString(folder % u'\\' % entry.name)))
        return Keep::NeedsAdministrator;
    return Keep::No;
}

void Collector::leaveFolder()
{
    const Frame frame = std::move(m_frames.back());
    m_frames.pop_back();
    // The network data folder is a database as a whole, and the user wants it cleared.
    if (m_item == Item::NetworkData)
        return;
    const bool any = frame.signs.any();
    for (const std::size_t index : frame.traces) {
        const QStringView name = m_found.files.at(index).name;
        if (any ? frame.signs.isPartOfDatabase(name) : DatabaseSigns::isJournalAnywhere(name))
            m_found.files.setKeep(index, Keep::Database);
    }
}

Obstacle obstacleOf(TempObstacle obstacle)
{
    switch (obstacle) {
    case TempObstacle::None:
        break;
    case TempObstacle::Unknown:
        return Obstacle::TempUnknown;
    case TempObstacle::DriveRoot:
        return Obstacle::TempDriveRoot;
    case TempObstacle::HoldsSystem:
        return Obstacle::TempHoldsSystem;
    case TempObstacle::NotTemporary:
        return Obstacle::TempNotTemporary;
    }
    return Obstacle::None;
}

void readValues(const KeySource &source, const ScanWorld &world, ItemTraces &found)
{
    for (RegistryKey &key : readKeys(world.registry, source.path(), source.withSubkeys)) {
        for (RegistryValue &value : key.values)
            found.values.push_back({key.path, key.lastWriteTime, std::move(value)});
    }
}

// False if the source lies behind a link: Windows' own folders are never links.
bool isInPlace(const FileSource &source, const ScanWorld &world)
{
    return source.folder == source.trustedRoot || !world.probe.facts(source.folder) ||
           world.probe.isInside(source.trustedRoot, source.folder);
}

void scanItem(Item item, const ScanOptions &options, const ScanWorld &world, ScanListener &listener,
              const core::CancelFlag &cancel, ItemTraces &found, int &total)
{
    if (item == Item::TempFiles) {
        found.obstacle = obstacleOf(tempObstacle(options.locations));
        found.obstacleFolder = options.locations.temporary;
    }
    for (const FileSource &source : fileSources(item, options.locations)) {
        if (!isInPlace(source, world)) {
            found.obstacle = Obstacle::ThroughLink;
            found.obstacleFolder = source.folder;
            continue;
        }
        core::WalkOptions walk;
        walk.readAheadThreads = source.recursive ? options.readAheadThreads : 0;
        Collector collector(item, source, options, world, listener, found, total);
        core::walkFolders(source.folder, world.enumerator, collector, cancel, walk);
    }
    if (const std::optional<KeySource> source = keySource(item)) {
        readValues(*source, world, found);
        total += static_cast<int>(found.values.size());
        listener.traceFound(total);
    }
}

} // namespace

ScanResult scanTraces(const ScanOptions &options, const ScanWorld &world, ScanListener &listener,
                      const core::CancelFlag &cancel)
{
    ScanResult result;
    int total = 0;
    for (const CatalogueRow &row : catalogue()) {
        if (!options.items[indexOf(row.item)] || cancel.isSet())
            continue;
        listener.itemBegins(row.item);
        ItemTraces &found = result[row.item];
        scanItem(row.item, options, world, listener, cancel, found, total);
        found.scanned = !cancel.isSet();
        if (found.scanned)
            listener.itemScanned(row.item, found);
    }
    return result;
}

} // namespace tracks
