// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/metadata/HeifItems.h"

#include <QBuffer>

#include <algorithm>
#include <limits>
#include <utility>

namespace conversion
{

namespace
{

void readItemInfo(QIODevice &meta, const Box &list, Items &items)
{
    const QByteArray head = contentOf(meta, list).left(6);
    const qint64 first = list.content + (head.startsWith('\0') ? 6 : 8);
    forEachBox(meta, first, list.end, [&](const Box &box) {
        Numbers entry(contentOf(meta, box));
        const quint64 version = entry.take(1);
        entry.take(3);
        const quint32 id = entry.takeId(version >= 3);
        entry.take(2); // protection index
        const QByteArray type = version >= 2 ? entry.takeBytes(4) : QByteArray();
        entry.takeText(); // item name
        items.largest = std::max(items.largest, id);
        if (type == "Exif" && !items.exif)
            items.exif = id;
        else if (type == "mime" && entry.takeText() == xmpType && !items.xmp)
            items.xmp = id;
        return true;
    });
}

// False if a part is not understood.
bool readLocations(const QByteArray &content, Items &items)
{
    Numbers list(content);
    const quint64 version = list.take(1);
    list.take(3);
    const quint64 sizes = list.take(2);
    const auto nibble = [sizes](int place) { return static_cast<int>(sizes >> (4 * place) & 15); };
    const quint64 count = list.take(version < 2 ? 2 : 4);
    int left = maxMetadataParts; // limits the loop, since extents may be empty
    for (quint64 i = 0; i < count && !list.failed(); ++i) {
        Location location;
        location.id = list.takeId(version >= 2);
        const quint64 method = version > 0 ? list.take(2) & 15 : 0;
        location.place = method == 0 ? Place::File : method == 1 ? Place::ItemData : Place::Other;
        location.reference = static_cast<quint32>(list.take(2));
        const quint64 base = list.take(nibble(1));
        const quint64 extents = list.take(2);
        for (quint64 extent = 0; extent < extents && !list.failed(); ++extent) {
            if (--left < 0)
                return false;
            if (version > 0)
                list.take(nibble(0));
            const quint64 offset = base + list.take(nibble(3));
            location.extents.push_back({offset, list.take(nibble(2))});
        }
        items.locations.push_back(std::move(location));
    }
    return !list.failed();
}

} // namespace

std::optional<Items> readItems(QIODevice &device)
{
    Items items;
    forEachBox(device, 0, device.size(), [&](const Box &box) {
        if (box.type == "meta")
            items.meta = box;
        return items.meta.type.isEmpty();
    });
    items.content = contentOf(device, items.meta).mid(4);
    QBuffer meta(&items.content);
    meta.open(QIODevice::ReadOnly);
    bool understood = !items.content.isEmpty();
    bool hasLocations = false;
    forEachBox(meta, 0, items.content.size(), [&](const Box &box) {
        if (box.type == "iinf") {
            readItemInfo(meta, box, items);
        } else if (box.type == "iloc") {
            hasLocations = true;
            understood = understood && readLocations(contentOf(meta, box), items);
        } else if (box.type == "pitm") {
            Numbers primary(contentOf(meta, box));
            const bool isLong = primary.take(1) > 0;
            primary.take(3);
            items.primary = primary.takeId(isLong);
        } else if (box.type == "idat") {
            items.itemData = box;
        }
        return true;
    });
    return understood && hasLocations ? std::optional(std::move(items)) : std::nullopt;
}

QByteArray itemContent(QIODevice &device, const Items &items, std::optional<quint32> id)
{
    const auto location = std::ranges::find(items.locations, id.value_or(0), &Location::id);
    if (!id || location == items.locations.end() || location->reference != 0)
        return {};
    QByteArray content;
    for (const Extent &extent : location->extents) {
        const auto bytes = static_cast<qint64>(std::min<quint64>(extent.length, maxMetadataBytes + 1));
        if (extent.offset > quint64(std::numeric_limits<qint64>::max()) ||
            content.size() + bytes > maxMetadataBytes)
            return {};
        const auto offset = static_cast<qint64>(extent.offset);
        if (location->place == Place::File && device.seek(offset))
            content += device.read(bytes);
        else if (location->place == Place::ItemData && offset < items.itemData.end - items.itemData.content)
            content += items.content.mid(items.itemData.content + offset, bytes);
    }
    return content;
}

qint64 itemBytes(const Items &items, std::optional<quint32> id)
{
    const auto location = std::ranges::find(items.locations, id.value_or(0), &Location::id);
    if (!id || location == items.locations.end())
        return 0;
    constexpr quint64 maxLength = quint64(1) << 40; // per extent, so that the sum cannot overflow
    qint64 bytes = 0;
    for (const Extent &extent : location->extents)
        bytes += static_cast<qint64>(std::min(extent.length, maxLength));
    return bytes;
}

} // namespace conversion
