// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/metadata/BoxMetadata.h"

#include "ConvertImage/engine/metadata/HeifItems.h"

#include <QBuffer>

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace conversion
{

const QByteArray jxlSignature("\0\0\0\x0cJXL \r\n\x87\n", 12);

namespace
{

// The first four bytes are the offset of the EXIF data after them.
QByteArray exifOf(const QByteArray &content)
{
    const qint64 start = content.size() > 4 ? 4 + qint64(bigNumber(content, 0)) : content.size();
    return withoutExifMarker(content.mid(std::min<qint64>(start, content.size())));
}

// A new item, or the replacement of an existing one.
struct NewItem {
    quint32 id = 0;
    bool isNew = false;
    QByteArray type;
    QByteArray content;
};

std::vector<NewItem> newItems(const Items &items, const Metadata &metadata)
{
    std::vector<NewItem> added;
    quint32 next = items.largest + 1;
    const auto add = [&](const std::optional<quint32> &known, const char *type, QByteArray content) {
        added.push_back({known ? *known : next, !known, type, std::move(content)});
        next += known ? 0u : 1u;
    };
    if (!metadata.exif.isEmpty())
        add(items.exif, "Exif", QByteArray(4, '\0') + metadata.exif);
    if (!metadata.xmp.isEmpty())
        add(items.xmp, "mime", metadata.xmp);
    return added;
}

QByteArray withNewInfo(const QByteArray &list, const std::vector<NewItem> &added)
{
    const bool isLong = !list.startsWith('\0');
    Numbers head(list);
    head.take(4);
    auto count = static_cast<quint32>(head.take(isLong ? 4 : 2));
    QByteArray entries = list.mid(head.at());
    for (const NewItem &item : added) {
        if (!item.isNew)
            continue;
        const QByteArray version("\2\0\0\0", 4);
        const QByteArray noName(1, '\0');
        entries += makeBox("infe", version + shortBytes(item.id) + QByteArray(2, '\0') + item.type + noName +
                                       (item.type == "mime" ? xmpType + '\0' : QByteArray()));
        ++count;
    }
    return list.left(4) + (isLong ? bigBytes(count) : shortBytes(count)) + entries;
}

// Reference type "cdsc": the item describes the image.
QByteArray newReferences(const std::vector<NewItem> &added, quint32 primary, bool isLong)
{
    QByteArray references;
    const auto id = [isLong](quint32 number) { return isLong ? bigBytes(number) : shortBytes(number); };
    for (const NewItem &item : added) {
        if (item.isNew)
            references += makeBox("cdsc", id(item.id) + shortBytes(1) + id(primary));
    }
    return references;
}

// `shift` applies to everything after the meta box. The data of the new items is contiguous from `newData`
// on.
QByteArray makeLocations(const Items &items, const std::vector<NewItem> &added, qint64 shift, qint64 newData)
{
    std::vector<Location> all;
    std::ranges::copy_if(items.locations, std::back_inserter(all), [&added](const Location &location) {
        return std::ranges::find(added, location.id, &NewItem::id) == added.end();
    });
    for (Location &location : all) {
        for (Extent &extent : location.extents) {
            const bool isBehind = location.place == Place::File && extent.offset >= quint64(items.meta.end);
            extent.offset += isBehind ? quint64(shift) : 0;
        }
    }
    for (const NewItem &item : added) {
        all.push_back({item.id, Place::File, 0, {{quint64(newData), quint64(item.content.size())}}});
        newData += item.content.size();
    }
    QByteArray content("\1\0\0\0\x44\0", 6); // version 1; 4 bytes each for offsets and lengths
    content += shortBytes(static_cast<quint32>(all.size()));
    for (const Location &location : all) {
        content += shortBytes(location.id) + shortBytes(location.place == Place::ItemData ? 1 : 0) +
                   shortBytes(location.reference) + shortBytes(static_cast<quint32>(location.extents.size()));
        for (const Extent &extent : location.extents)
            content +=
                bigBytes(static_cast<quint32>(extent.offset)) + bigBytes(static_cast<quint32>(extent.length));
    }
    return content;
}

QByteArray makeMeta(Items &items, const std::vector<NewItem> &added, qint64 shift, qint64 newData)
{
    QByteArray boxes(4, '\0');
    bool hasReferences = false;
    QBuffer meta(&items.content);
    meta.open(QIODevice::ReadOnly);
    forEachBox(meta, 0, items.content.size(), [&](const Box &box) {
        const QByteArray content = contentOf(meta, box);
        if (box.type == "iinf") {
            boxes += makeBox(box.type, withNewInfo(content, added));
        } else if (box.type == "iloc") {
            boxes += makeBox(box.type, makeLocations(items, added, shift, newData));
        } else if (box.type == "iref") {
            hasReferences = true;
            boxes +=
                makeBox(box.type, content + newReferences(added, items.primary, !content.startsWith('\0')));
        } else {
            boxes += items.content.mid(box.at, box.end - box.at);
        }
        return true;
    });
    if (!hasReferences)
        boxes += makeBox("iref", QByteArray(4, '\0') + newReferences(added, items.primary, false));
    return makeBox("meta", boxes);
}

// Whether all items can be rewritten in the short form.
bool isRewritable(const Items &items)
{
    constexpr quint32 maxShort = 0xfff0;
    return items.primary <= maxShort && items.largest <= maxShort &&
           std::ranges::all_of(items.locations, [](const Location &location) {
               return location.place != Place::Other && location.id <= maxShort &&
                      std::ranges::all_of(location.extents,
                                          [](const Extent &extent) { return extent.length > 0; });
           });
}

} // namespace

// Brotli-compressed boxes are skipped.
Metadata readJxlMetadata(QIODevice &device)
{
    Metadata found;
    forEachBox(device, 0, device.size(), [&](const Box &box) {
        const bool tooLong = isTooLong(device, box.end - box.content);
        if (box.type == "Exif") {
            found.isExifCut = tooLong;
            found.exif = exifOf(contentOf(device, box));
        } else if (box.type == "xml ") {
            found.isXmpCut = tooLong;
            found.xmp = contentOf(device, box);
        }
        return true;
    });
    return found;
}

Metadata readHeifMetadata(QIODevice &device)
{
    const std::optional<Items> items = readItems(device);
    if (!items)
        return {};
    return {exifOf(itemContent(device, *items, items->exif)), itemContent(device, *items, items->xmp),
            isTooLong(device, itemBytes(*items, items->exif)),
            isTooLong(device, itemBytes(*items, items->xmp))};
}

QByteArray withMetadataInJxl(const QByteArray &file, const Metadata &metadata)
{
    QByteArray boxes;
    if (file.startsWith("\xff\x0a")) {
        boxes = jxlSignature + makeBox("ftyp", QByteArray("jxl \0\0\0\0jxl ", 12)) + makeBox("jxlc", file);
    } else if (file.startsWith(jxlSignature)) {
        QBuffer device;
        device.setData(file);
        device.open(QIODevice::ReadOnly);
        // Rewritten, since the last box may have no length and would absorb what follows.
        forEachBox(device, 0, file.size(), [&](const Box &box) {
            if (box.type != "Exif" && box.type != "xml ")
                boxes += makeBox(box.type, file.mid(box.content, box.end - box.content));
            return true;
        });
    } else {
        return file;
    }
    if (!metadata.exif.isEmpty())
        boxes += makeBox("Exif", QByteArray(4, '\0') + metadata.exif);
    if (!metadata.xmp.isEmpty())
        boxes += makeBox("xml ", metadata.xmp);
    return boxes;
}

QByteArray withMetadataInHeif(const QByteArray &file, const Metadata &metadata)
{
    QBuffer device;
    device.setData(file);
    device.open(QIODevice::ReadOnly);
    std::optional<Items> items = readItems(device);
    if (!items || !isRewritable(*items) || file.size() > std::numeric_limits<qint32>::max())
        return file;
    const std::vector<NewItem> added = newItems(*items, metadata);
    QByteArray data;
    for (const NewItem &item : added)
        data += item.content;
    const Box &meta = items->meta;
    // Its length does not depend on the offsets in it.
    const qint64 shift = makeMeta(*items, added, 0, 0).size() - (meta.end - meta.at);
    const qint64 newData = file.size() + shift + 8;
    return file.left(meta.at) + makeMeta(*items, added, shift, newData) + file.mid(meta.end) +
           makeBox("mdat", data);
}

} // namespace conversion
