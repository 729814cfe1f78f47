// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/BoxMetadata.h"

#include "ConvertImage/engine/MetadataBytes.h"

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

const QByteArray xmpType("application/rdf+xml");

struct Box {
    QByteArray type;
    qint64 at = 0;
    qint64 content = 0;
    qint64 end = 0;
};

// Until `visit` returns false. A box that does not lie whole between the two ends the list.
template <class Visit>
void forEachBox(QIODevice &device, qint64 from, qint64 end, Visit visit)
{
    qint64 at = from;
    for (int part = 0; part < maxMetadataParts && at < end && device.seek(at); ++part) {
        const QByteArray header = device.read(8);
        if (header.size() < 8)
            return;
        Box box{header.mid(4), at, at + 8, 0};
        qint64 length = bigNumber(header, 0);
        if (length == 1) {
            const QByteArray large = device.read(8);
            length = large.size() == 8 ? qFromBigEndian<qint64>(large.constData()) : 0;
            box.content += 8;
        } else if (length == 0) {
            length = end - at;
        }
        if (length < box.content - at || length > end - at)
            return;
        box.end = at + length;
        if (!visit(std::as_const(box)))
            return;
        at = box.end;
    }
}

QByteArray contentOf(QIODevice &device, const Box &box)
{
    return device.seek(box.content) ? readPart(device, box.end - box.content) : QByteArray();
}

QByteArray makeBox(const QByteArray &type, const QByteArray &content)
{
    return bigBytes(static_cast<quint32>(content.size() + 8)) + type + content;
}

QByteArray shortBytes(quint32 number)
{
    return bigBytes(number).right(2);
}

// Four bytes tell where behind them the EXIF begins.
QByteArray exifOf(const QByteArray &content)
{
    const qint64 start = content.size() > 4 ? 4 + qint64(bigNumber(content, 0)) : content.size();
    return withoutExifMarker(content.mid(std::min<qint64>(start, content.size())));
}

// Numbers one after the other; zeros once the bytes are at their end.
class Numbers
{
public:
    explicit Numbers(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    quint64 take(int bytes)
    {
        if (bytes > 8 || m_at + bytes > m_bytes.size()) {
            m_failed = true;
            return 0;
        }
        quint64 number = 0;
        for (int i = 0; i < bytes; ++i)
            number = number << 8 | static_cast<uchar>(m_bytes[m_at++]);
        return number;
    }
    quint32 takeId(bool isLong) { return static_cast<quint32>(take(isLong ? 4 : 2)); }
    QByteArray takeText() // to the next zero
    {
        const qsizetype end = m_bytes.indexOf('\0', m_at);
        const QByteArray text = m_bytes.mid(m_at, end < 0 ? -1 : end - m_at);
        m_at = end < 0 ? m_bytes.size() : end + 1;
        return text;
    }
    QByteArray takeBytes(int bytes)
    {
        const QByteArray taken = m_bytes.mid(m_at, bytes);
        m_at = std::min(m_at + bytes, m_bytes.size());
        return taken;
    }
    qsizetype at() const { return m_at; }
    bool failed() const { return m_failed; }

private:
    QByteArray m_bytes;
    qsizetype m_at = 0;
    bool m_failed = false;
};

struct Extent {
    quint64 offset = 0;
    quint64 length = 0;
};
enum class Place { File, ItemData, Other };
struct Location {
    quint32 id = 0;
    Place place = Place::File;
    quint32 reference = 0; // 0: this file
    std::vector<Extent> extents;
};

// What the "meta" box of a file says of its items.
struct Items {
    Box meta;
    QByteArray content; // of meta, behind its version
    quint32 primary = 0;
    quint32 largest = 0; // id
    std::optional<quint32> exif;
    std::optional<quint32> xmp;
    std::vector<Location> locations;
    Box itemData; // in the content; empty: none
};

void readItemInfo(QIODevice &meta, const Box &list, Items &items)
{
    const QByteArray head = contentOf(meta, list).left(6);
    const qint64 first = list.content + (head.startsWith('\0') ? 6 : 8);
    forEachBox(meta, first, list.end, [&](const Box &box) {
        Numbers entry(contentOf(meta, box));
        const quint64 version = entry.take(1);
        entry.take(3);
        const quint32 id = entry.takeId(version >= 3);
        entry.take(2); // protection
        const QByteArray type = version >= 2 ? entry.takeBytes(4) : QByteArray();
        entry.takeText(); // name
        items.largest = std::max(items.largest, id);
        if (type == "Exif" && !items.exif)
            items.exif = id;
        else if (type == "mime" && entry.takeText() == xmpType && !items.xmp)
            items.xmp = id;
        return true;
    });
}

// False when a part of it is not understood.
bool readLocations(const QByteArray &content, Items &items)
{
    Numbers list(content);
    const quint64 version = list.take(1);
    list.take(3);
    const quint64 sizes = list.take(2);
    const auto nibble = [sizes](int place) { return static_cast<int>(sizes >> (4 * place) & 15); };
    const quint64 count = list.take(version < 2 ? 2 : 4);
    int left = maxMetadataParts; // an extent may be of no bytes at all
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

// --- writing ---

// An item that is added, or put in the place of one that there is.
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

// "describes the picture"
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

// `shift`: of what lies behind the meta box. The new items lie one after the other from `newData` on.
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
    QByteArray content("\1\0\0\0\x44\0", 6); // version 1; four bytes for each offset and length
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

// Whether all of it can be written down anew in the short form.
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

// Boxes that are packed with brotli are passed over.
Metadata readJxlMetadata(QIODevice &device)
{
    Metadata found;
    forEachBox(device, 0, device.size(), [&](const Box &box) {
        if (box.type == "Exif")
            found.exif = exifOf(contentOf(device, box));
        else if (box.type == "xml ")
            found.xmp = contentOf(device, box);
        return true;
    });
    return found;
}

Metadata readHeifMetadata(QIODevice &device)
{
    const std::optional<Items> items = readItems(device);
    if (!items)
        return {};
    return {exifOf(itemContent(device, *items, items->exif)), itemContent(device, *items, items->xmp)};
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
        // Written anew: the last one may be without a length, and would take in what follows.
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
