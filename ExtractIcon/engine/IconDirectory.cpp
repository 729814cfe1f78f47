// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/IconDirectory.h"

#include "ExtractIcon/engine/Bytes.h"

#include <algorithm>
#include <limits>

namespace icons
{

namespace
{

DirectoryEntry entryHead(QByteArrayView bytes, qint64 at)
{
    DirectoryEntry entry;
    entry.width = number<quint8>(bytes, at);
    entry.height = number<quint8>(bytes, at + 1);
    entry.colours = number<quint8>(bytes, at + 2);
    entry.reserved = number<quint8>(bytes, at + 3);
    entry.planes = number<quint16>(bytes, at + 4);
    entry.bits = number<quint16>(bytes, at + 6);
    entry.size = number<quint32>(bytes, at + 8);
    return entry;
}

void appendEntry(QByteArray &file, const DirectoryEntry &entry, quint32 size, quint32 offset)
{
    append(file, entry.width);
    append(file, entry.height);
    append(file, entry.colours);
    append(file, entry.reserved);
    append(file, entry.planes);
    append(file, entry.bits);
    append(file, size);
    append(file, offset);
}

} // namespace

std::optional<IconDirectory> parseGroup(QByteArrayView bytes)
{
    if (bytes.size() < headerBytes)
        return std::nullopt;
    IconDirectory group;
    group.reserved = number<quint16>(bytes, 0);
    group.type = number<quint16>(bytes, 2);
    const qsizetype whole = (bytes.size() - headerBytes) / groupEntryBytes;
    const qsizetype count = std::min<qsizetype>(number<quint16>(bytes, 4), whole);
    if (count > maxImages)
        return std::nullopt;
    group.entries.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        const qsizetype at = headerBytes + i * groupEntryBytes;
        group.entries.append(entryHead(bytes, at));
        group.entries.last().place = number<quint16>(bytes, at + 12);
    }
    return group;
}

std::optional<IconDirectory> parseIconFile(QByteArrayView file)
{
    IconDirectory directory;
    directory.reserved = number<quint16>(file, 0);
    directory.type = number<quint16>(file, 2);
    const qsizetype count = number<quint16>(file, 4);
    if (directory.reserved != 0 || directory.type != iconType || count == 0 || count > maxImages ||
        file.size() < headerBytes + count * fileEntryBytes)
        return std::nullopt;
    directory.entries.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        const qsizetype at = headerBytes + i * fileEntryBytes;
        directory.entries.append(entryHead(file, at));
        directory.entries.last().place = number<quint32>(file, at + 12);
    }
    return directory;
}

std::optional<QByteArrayView> imageBytes(QByteArrayView file, const DirectoryEntry &entry)
{
    return entry.size == 0 ? std::nullopt : range(file, entry.place, entry.size);
}

QByteArray iconFile(const IconDirectory &directory, const QList<QByteArray> &images)
{
    Q_ASSERT(directory.entries.size() == images.size());
    const qsizetype count = directory.entries.size();
    qint64 total = headerBytes + fileEntryBytes * count;
    for (const QByteArray &image : images)
        total += image.size();
    if (total > std::numeric_limits<quint32>::max())
        return {};

    QByteArray file;
    file.reserve(static_cast<qsizetype>(total));
    append(file, directory.reserved);
    append(file, directory.type);
    append(file, static_cast<quint16>(count));
    qint64 offset = headerBytes + fileEntryBytes * count;
    for (qsizetype i = 0; i < count; ++i) {
        appendEntry(file, directory.entries[i], static_cast<quint32>(images[i].size()),
                    static_cast<quint32>(offset));
        offset += images[i].size();
    }
    for (const QByteArray &image : images)
        file.append(image);
    return file;
}

} // namespace icons
