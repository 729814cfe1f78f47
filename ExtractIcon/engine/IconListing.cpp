// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/IconListing.h"

namespace icons
{

namespace
{

// Calls `found` for every entry whose image can be loaded.
template <class Found>
void eachImage(IconSource &source, const IconDirectory &directory, Found found)
{
    for (const DirectoryEntry &entry : directory.entries) {
        if (const std::optional<QByteArrayView> bytes = source.image(entry))
            found(entry, *bytes);
    }
}

} // namespace

QList<IconRecord> listIcons(IconSource &source, const core::CancelFlag &cancel)
{
    QList<IconRecord> records;
    for (const quint32 id : source.iconIds()) {
        if (cancel.isSet())
            break;
        const std::optional<IconDirectory> directory = source.directory(id);
        if (!directory)
            continue;
        IconRecord record{.id = id};
        eachImage(source, *directory, [&](const DirectoryEntry &entry, QByteArrayView bytes) {
            record.images.append(imageFacts(bytes, entry));
        });
        record.representative = representative(record.images);
        if (record.representative >= 0)
            records.append(record);
    }
    return records;
}

QImage thumbnail(IconSource &source, const IconRecord &record, int side)
{
    const std::optional<IconDirectory> directory = source.directory(record.id);
    QImage image;
    int index = 0;
    if (directory) {
        eachImage(source, *directory, [&](const DirectoryEntry &entry, QByteArrayView bytes) {
            if (index++ == record.representative)
                image = decodeImage(bytes, entry).image;
        });
    }
    if (image.width() > side || image.height() > side)
        return image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return image;
}

std::optional<StoredIcon> readIcon(IconSource &source, quint32 id)
{
    const std::optional<IconDirectory> directory = source.directory(id);
    if (!directory)
        return std::nullopt;
    StoredIcon icon;
    icon.directory.reserved = directory->reserved;
    icon.directory.type = directory->type;
    qint64 total = 0;
    eachImage(source, *directory, [&](const DirectoryEntry &entry, QByteArrayView bytes) {
        total += bytes.size();
        if (total > maxIconBytes)
            return;
        icon.directory.entries.append(entry);
        icon.bytes.append(bytes.toByteArray());
    });
    if (icon.bytes.isEmpty() || total > maxIconBytes)
        return std::nullopt;
    return icon;
}

QList<IconImage> decodeIcon(const StoredIcon &icon)
{
    QList<IconImage> images;
    images.reserve(icon.bytes.size());
    qint64 total = 0;
    for (qsizetype i = 0; i < icon.bytes.size(); ++i) {
        if (total < maxIconBytes)
            images.append(decodeImage(icon.bytes[i], icon.directory.entries[i]));
        else
            images.append({imageFacts(icon.bytes[i], icon.directory.entries[i]), {}});
        total += images.last().image.sizeInBytes();
    }
    return images;
}

} // namespace icons
