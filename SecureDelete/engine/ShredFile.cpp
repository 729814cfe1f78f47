// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/engine/ShredFile.h"

namespace securedelete
{

namespace
{

// winnt.h, FILE_ATTRIBUTE_*
constexpr quint32 sparse = 0x200;
constexpr quint32 compressed = 0x800;
constexpr quint32 encrypted = 0x4000;

constexpr int restoreAttempts = 5;

} // namespace

QString roundName(const QString &name, char16_t letter)
{
    QString result = name;
    for (QChar &unit : result) {
        if (unit != u'.')
            unit = letter;
    }
    return result;
}

FileShredder::FileShredder(const ShredOptions &options, Disk &disk, Overwriter &overwriter,
                           const core::CancelFlag &cancel)
    : m_options(options),
      m_disk(disk),
      m_overwriter(overwriter),
      m_cancel(cancel)
{
}

ShredRecord FileShredder::shred(const Item &item)
{
    ShredRecord record{.path = item.path(), .size = item.size};
    if ((item.attributes & core::AttributeReadOnly) != 0)
        record.fault = Fault::ReadOnly;
    else if (core::isPlaceholder(item.attributes))
        record.fault = Fault::InCloud;
    if (record.fault != Fault::None)
        return record;
    const std::unique_ptr<DoomedFile> file = m_disk.file(item);
    record.fault = overwrite(item, *file, record);
    // A file that was not overwritten keeps its name, so that the user can find it and try again.
    if (record.fault == Fault::None)
        record.fault = eraseNameAndFile(item, *file, record);
    record.destroyed = record.fault == Fault::None;
    return record;
}

Fault FileShredder::overwrite(const Item &item, DoomedFile &file, ShredRecord &record)
{
    Fault fault = Fault::None;
    Target *target = file.openForWriting(fault);
    if (!target)
        return fault;
    fault = overwriteOpen(*target, item, file, record);
    file.close();
    return fault;
}

// With compressed or encrypted files, writing through the file may go to other clusters than the old content.
// So the clusters are overwritten first; Windows mostly refuses that, and the content is written through the
// file in any case.
Fault FileShredder::overwriteOpen(Target &target, const Item &item, DoomedFile &file, ShredRecord &record)
{
    if (file.linkCount() > 1 && !m_options.overwriteOtherNames)
        return Fault::OtherNames;
    const std::vector<Stream> streams = file.streams();
    const bool transformed = (item.attributes & (sparse | compressed | encrypted)) != 0;
    if (!transformed || !overwriteClusters(item, file)) {
        if (const Fault fault = overwriteContent(target, item, file); fault != Fault::None)
            return fault;
        record.oldClustersMaySurvive = transformed && item.size > 0;
    }
    return overwriteStreams(streams, file, record);
}

// Holes are skipped: writing them would allocate their full size.
Fault FileShredder::overwriteContent(Target &target, const Item &item, DoomedFile &file)
{
    if ((item.attributes & sparse) == 0)
        return m_overwriter.overwriteContent(target, item.size) ? Fault::None : writeFault();
    const std::optional<std::vector<Range>> ranges = file.allocatedRanges();
    if (!ranges) {
        if (item.size > file.freeBytes())
            return Fault::DiskFull;
        return m_overwriter.overwriteContent(target, item.size) ? Fault::None : writeFault();
    }
    for (const Range &range : *ranges) {
        if (range.offset >= item.size)
            continue;
        if (!m_overwriter.overwriteRange(target, range.offset, qMin(range.length, item.size - range.offset)))
            return writeFault();
    }
    return Fault::None;
}

Fault FileShredder::overwriteStreams(const std::vector<Stream> &streams, DoomedFile &file,
                                     ShredRecord &record)
{
    for (const Stream &stream : streams) {
        Fault fault = Fault::None;
        Target *target = file.openStream(stream.name, fault);
        if (!target)
            return fault;
        if (!m_overwriter.overwriteContent(*target, stream.size))
            return writeFault();
        ++record.streams;
    }
    return Fault::None;
}

// The cluster list is used only if it is plausible, and equal before and after the volume was opened.
bool FileShredder::overwriteClusters(const Item &, DoomedFile &file)
{
    const std::optional<std::vector<Extent>> extents = file.extents();
    if (!extents || extents->empty())
        return false;
    VolumeFacts volume;
    Target *target = file.openVolume(volume);
    if (!target || !areBelievable(*extents, volume) || file.extents() != extents)
        return false;
    for (const Extent &extent : *extents) {
        if (!extent.isAllocated())
            continue;
        const auto cluster = static_cast<quint64>(extent.logicalCluster);
        if (!m_overwriter.overwriteRun(*target, cluster * volume.clusterSize,
                                       static_cast<quint64>(extent.clusters) * volume.clusterSize))
            return false;
    }
    return true;
}

Fault FileShredder::eraseNameAndFile(const Item &item, DoomedFile &file, ShredRecord &record)
{
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
        if (file.rename(roundName(file.name(), letter)) != Fault::None)
            break;
    }
    const Fault fault = file.erase();
    if (fault == Fault::None)
        return file.formerNameExists() ? Fault::Failed : Fault::None;
    if (restoreName(item, file))
        return fault;
    record.leftName = file.name();
    return fault;
}

bool FileShredder::restoreName(const Item &item, DoomedFile &file)
{
    for (int attempt = 1; file.name() != item.name; ++attempt) {
        if (file.rename(item.name) == Fault::None)
            break;
        if (attempt == restoreAttempts)
            return false;
        m_disk.pause();
    }
    return true;
}

Fault FileShredder::writeFault() const
{
    return m_cancel.isSet() && m_options.method == Method::Gutmann ? Fault::Cancelled : Fault::WriteFailed;
}

} // namespace securedelete
