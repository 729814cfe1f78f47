// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/metadata/TiffMetadata.h"

#include "ConvertImage/engine/metadata/MetadataBytes.h"
#include "ConvertImage/engine/metadata/TiffTags.h"

#include <QBuffer>

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace conversion
{

namespace
{

using namespace tiff;

constexpr int maxEntries = 500; // per directory

// The size of the numbers to swap, by TIFF field type.
constexpr std::array<int, 14> bytesOfNumber{0, 1, 1, 2, 4, 4, 1, 1, 2, 4, 4, 4, 8, 4};

// The fields of an image directory that are not about pixel storage: title, maker, model, orientation,
// software, date, artist, rating, copyright, and Windows' own texts.
constexpr std::array<quint16, 15> describingTags{0x010e, 0x010f, 0x0110, 0x0112, 0x0131,
                                                 0x0132, 0x013b, 0x4746, 0x4749, 0x8298,
                                                 0x9c9b, 0x9c9c, 0x9c9d, 0x9c9e, 0x9c9f};

struct Entry {
    quint16 tag = 0;
    quint16 type = 0;
    quint32 count = 0;
    QByteArray value; // little-endian
};
using Directory = std::vector<Entry>;

quint32 pointer(const Entry &entry)
{
    return entry.value.size() == 4 ? qFromLittleEndian<quint32>(entry.value.constData()) : 0;
}

class TiffReader
{
public:
    explicit TiffReader(QIODevice &device) : m_device(device)
    {
        const QByteArray head = device.seek(0) ? device.read(headerBytes) : QByteArray();
        m_big = head.startsWith("MM");
        m_first = head.size() == headerBytes ? number(head, 4) : 0;
        m_usable = head.size() == headerBytes && (m_big || head.startsWith("II")) && word(head, 2) == 42;
    }

    Directory first() { return m_usable ? directory(m_first) : Directory(); }
    // Empty if it is not completely within the file.
    Directory directory(qint64 at)
    {
        Directory entries;
        const QByteArray head = at >= headerBytes && seek(at) ? m_device.read(2) : QByteArray();
        const int count = head.size() == 2 ? word(head, 0) : 0;
        if (count == 0 || count > maxEntries)
            return {};
        const QByteArray stored = m_device.read(qint64(count) * entryBytes);
        if (stored.size() < qsizetype(count) * entryBytes)
            return {};
        for (int i = 0; i < count; ++i) {
            if (auto entry = readEntry(stored.mid(qsizetype(i) * entryBytes, entryBytes)))
                entries.push_back(std::move(*entry));
        }
        return entries;
    }

    const std::vector<quint16> &skipped() const { return m_skipped; } // tags that were too long

private:
    std::optional<Entry> readEntry(const QByteArray &stored)
    {
        Entry entry{word(stored, 0), word(stored, 2), number(stored, 4), {}};
        const int size = entry.type < bytesOfType.size() ? bytesOfType[entry.type] : 0;
        const qint64 bytes = qint64(size) * entry.count;
        if (bytes > m_left && bytes <= m_device.size())
            m_skipped.push_back(entry.tag);
        if (bytes == 0 || bytes > m_left)
            return std::nullopt;
        m_left -= bytes;
        if (bytes <= 4)
            entry.value = stored.mid(8, bytes);
        else if (seek(number(stored, 8)))
            entry.value = m_device.read(bytes);
        if (entry.value.size() != bytes)
            return std::nullopt;
        const int step = m_big ? bytesOfNumber[entry.type] : 1;
        for (qsizetype at = 0; step > 1 && at + step <= entry.value.size(); at += step)
            std::reverse(entry.value.begin() + at, entry.value.begin() + at + step);
        return entry;
    }
    bool seek(qint64 at) { return at < m_device.size() && m_device.seek(at); }
    quint16 word(const QByteArray &bytes, qsizetype at) const
    {
        return m_big ? qFromBigEndian<quint16>(bytes.constData() + at)
                     : qFromLittleEndian<quint16>(bytes.constData() + at);
    }
    quint32 number(const QByteArray &bytes, qsizetype at) const
    {
        return m_big ? qFromBigEndian<quint32>(bytes.constData() + at)
                     : qFromLittleEndian<quint32>(bytes.constData() + at);
    }

    QIODevice &m_device;
    bool m_big = false;
    bool m_usable = false;
    qint64 m_first = 0;
    qint64 m_left = 2 * maxMetadataBytes; // remaining budget for values
    std::vector<quint16> m_skipped;
};

// A directory followed by its values, for an even offset. `next` is the offset of the next directory.
QByteArray directoryBytes(Directory entries, quint32 at, quint32 next)
{
    std::ranges::stable_sort(entries, {}, &Entry::tag);
    const auto word = [](quint32 number) { return littleBytes(number).left(2); };
    const auto values = at + 2 + static_cast<quint32>(entries.size()) * entryBytes + 4;
    QByteArray directory = word(static_cast<quint32>(entries.size()));
    QByteArray behind;
    for (const Entry &entry : entries) {
        directory += word(entry.tag) + word(entry.type) + littleBytes(entry.count);
        if (entry.value.size() <= 4) {
            directory += entry.value.leftJustified(4, '\0');
            continue;
        }
        directory += littleBytes(values + static_cast<quint32>(behind.size()));
        behind += entry.value.size() % 2 == 0 ? entry.value : entry.value + '\0';
    }
    return directory + littleBytes(next) + behind;
}

// The subdirectories, written from `at` on; updates the entries of `parent` that point to them.
QByteArray placeSubdirectories(TiffReader &from, Directory &parent, quint32 at)
{
    QByteArray placed;
    std::erase_if(parent, [&](Entry &entry) {
        if (entry.tag != exifDirectoryTag && entry.tag != placeDirectoryTag &&
            entry.tag != interoperabilityTag)
            return false;
        Directory below = from.directory(pointer(entry));
        if (entry.tag == exifDirectoryTag) // the only one that has a subdirectory
            placed += placeSubdirectories(from, below, at + static_cast<quint32>(placed.size()));
        else
            std::erase_if(below, [](const Entry &deep) { return deep.tag == exifDirectoryTag; });
        if (below.empty())
            return true;
        entry = {entry.tag, longType, 1, littleBytes(at + static_cast<quint32>(placed.size()))};
        placed += directoryBytes(std::move(below), at + static_cast<quint32>(placed.size()), 0);
        return false;
    });
    return placed;
}

bool isDescribing(quint16 tag)
{
    return tag == exifDirectoryTag || tag == placeDirectoryTag ||
           std::ranges::find(describingTags, tag) != describingTags.end();
}

} // namespace

Metadata readTiffMetadata(QIODevice &device)
{
    TiffReader reader(device);
    Directory fields = reader.first();
    Metadata found;
    for (const Entry &entry : fields) {
        if (entry.tag == xmpTag)
            found.xmp = entry.value;
    }
    const std::vector<quint16> skipped = reader.skipped();
    found.isXmpCut = std::ranges::find(skipped, xmpTag) != skipped.end();
    found.isExifCut = std::ranges::any_of(skipped, isDescribing);
    std::erase_if(fields, [](const Entry &entry) { return !isDescribing(entry.tag); });
    const QByteArray below = placeSubdirectories(reader, fields, headerBytes);
    found.isExifCut = found.isExifCut || reader.skipped().size() > skipped.size();
    if (fields.empty())
        return found;
    const auto first = static_cast<quint32>(headerBytes + below.size());
    found.exif = QByteArray("II\x2a\0", 4) + littleBytes(first) + below + directoryBytes(fields, first, 0);
    return found;
}

QByteArray withMetadataInTiff(const QByteArray &file, const Metadata &metadata)
{
    if (!file.startsWith(QByteArray("II\x2a\0", 4)) || file.size() > 0x7fff'0000)
        return file;
    QBuffer device;
    device.setData(file);
    device.open(QIODevice::ReadOnly);
    Directory fields = TiffReader(device).first();
    if (fields.empty())
        return file;
    QBuffer exif;
    exif.setData(metadata.exif);
    exif.open(QIODevice::ReadOnly);
    TiffReader reader(exif);
    Directory added = reader.first();
    std::erase_if(added, [](const Entry &entry) { return !isDescribing(entry.tag); });
    QByteArray grown = file.size() % 2 == 0 ? file : file + '\0';
    grown += placeSubdirectories(reader, added, static_cast<quint32>(grown.size()));
    if (!metadata.xmp.isEmpty())
        added.push_back({xmpTag, byteType, static_cast<quint32>(metadata.xmp.size()), metadata.xmp});
    std::erase_if(fields, [&added](const Entry &field) {
        return std::ranges::find(added, field.tag, &Entry::tag) != added.end();
    });
    std::ranges::copy(added, std::back_inserter(fields));
    const auto first = static_cast<quint32>(grown.size());
    grown.replace(4, 4, littleBytes(first));
    return grown + directoryBytes(std::move(fields), first, 0);
}

} // namespace conversion
