// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/metadata/JpegMetadata.h"

#include "ConvertImage/engine/metadata/MetadataBytes.h"
#include "ConvertImage/engine/metadata/XmpPacket.h"

#include <QHash>

#include <algorithm>

namespace conversion
{

namespace
{

const QByteArray xmpMarker("http://ns.adobe.com/xap/1.0/\0", 29);
const QByteArray extensionMarker("http://ns.adobe.com/xmp/extension/\0", 35);
constexpr qsizetype digestLength = 32;
constexpr qsizetype extensionHeader = digestLength + 8; // plus the total length and the offset of this part
constexpr qsizetype maxSegment = 0xffff - 2;            // excluding its own length field

// The parts of an extension may be in any order, and several extensions may be interleaved.
class Extensions
{
public:
    void add(const QByteArray &content)
    {
        if (content.size() < extensionHeader)
            return;
        const qsizetype length = bigNumber(content, digestLength);
        const qsizetype at = bigNumber(content, digestLength + 4);
        const QByteArray part = content.mid(extensionHeader);
        if (part.isEmpty() || at + part.size() > length)
            return;
        Extension &extension = m_all[content.left(digestLength).toUpper()];
        if (extension.bytes.isEmpty()) {
            extension.isTooLong = length > m_left;
            if (extension.isTooLong)
                return;
            m_left -= length;
            extension.bytes.resize(length);
        }
        if (at + part.size() > extension.bytes.size())
            return;
        std::copy(part.begin(), part.end(), extension.bytes.begin() + at);
        extension.had += part.size();
    }
    bool isTooLong(const QByteArray &digest) const { return m_all.value(digest).isTooLong; }
    // Empty unless all parts are present.
    QByteArray take(const QByteArray &digest) const
    {
        const Extension found = m_all.value(digest);
        return found.had == found.bytes.size() ? found.bytes : QByteArray();
    }

private:
    struct Extension {
        QByteArray bytes;
        qsizetype had = 0;
        bool isTooLong = false;
    };
    QHash<QByteArray, Extension> m_all;
    qsizetype m_left = maxMetadataBytes;
};

QByteArray segment(const QByteArray &content)
{
    QByteArray header("\xff\xe1\0\0", 4);
    qToBigEndian(static_cast<quint16>(content.size() + 2), header.data() + 2);
    return header + content;
}

QByteArray extensionSegments(const SplitXmp &split)
{
    const qsizetype room = maxSegment - extensionMarker.size() - extensionHeader;
    QByteArray segments;
    for (qsizetype at = 0; at < split.extension.size(); at += room)
        segments +=
            segment(extensionMarker + split.digest + bigBytes(static_cast<quint32>(split.extension.size())) +
                    bigBytes(static_cast<quint32>(at)) + split.extension.mid(at, room));
    return segments;
}

// Empty if it cannot be split.
QByteArray xmpSegments(const QByteArray &xmp)
{
    const qsizetype room = maxSegment - xmpMarker.size();
    if (xmp.size() <= room)
        return segment(xmpMarker + xmp);
    const SplitXmp split = splitXmp(xmp, room);
    return split.packet.isEmpty() ? QByteArray()
                                  : segment(xmpMarker + split.packet) + extensionSegments(split);
}

// Calls take(marker, length) for each segment before the image data, with the device at the segment's
// content. Returns the offset of the image data, or -1 if it was not found.
template <class Take>
qint64 forEachSegment(QIODevice &device, Take take)
{
    constexpr uchar startOfScan = 0xda;
    qint64 at = 2;
    for (int part = 0; part < maxMetadataParts && device.seek(at); ++part) {
        const QByteArray header = device.read(4);
        if (header.size() < 4 || uchar(header[0]) != 0xff)
            return -1;
        if (uchar(header[1]) == startOfScan)
            return at;
        const qint64 length = qFromBigEndian<quint16>(header.constData() + 2);
        if (length < 2)
            return -1;
        take(uchar(header[1]), length - 2);
        at += 2 + length;
    }
    return -1;
}

} // namespace

Metadata readJpegMetadata(QIODevice &device)
{
    Metadata found;
    Extensions extensions;
    forEachSegment(device, [&](uchar marker, qint64 length) {
        constexpr uchar app1 = 0xe1;
        const QByteArray content = marker == app1 ? device.read(length) : QByteArray();
        if (found.exif.isEmpty() && content.startsWith(exifMarker))
            found.exif = content.mid(exifMarker.size());
        else if (found.xmp.isEmpty() && content.startsWith(xmpMarker))
            found.xmp = content.mid(xmpMarker.size());
        else if (content.startsWith(extensionMarker))
            extensions.add(content.mid(extensionMarker.size()));
    });
    const QByteArray digest = extensionDigest(found.xmp);
    found.isXmpCut = extensions.isTooLong(digest);
    if (const QByteArray more = extensions.take(digest); !more.isEmpty())
        found.xmp = mergedXmp(found.xmp, more);
    return found;
}

bool isCutOffJpeg(QIODevice &device)
{
    constexpr qint64 pieceBytes = 1 << 16;
    if (!device.seek(0) || device.read(2) != "\xff\xd8")
        return false;
    const qint64 picture = forEachSegment(device, [](uchar, qint64) {});
    if (picture < 0 || !device.seek(picture))
        return false;
    // This marker does not occur within image data.
    QByteArray piece;
    while (!device.atEnd()) {
        piece = piece.right(1) + device.read(pieceBytes);
        if (piece.contains("\xff\xd9"))
            return false;
        if (piece.size() < 2)
            break; // nothing more can be read
    }
    return true;
}

WithMetadata withMetadataInJpeg(const QByteArray &file, const Metadata &metadata)
{
    if (!file.startsWith("\xff\xd8") || file.size() < 6)
        return {file, metadata};
    WithMetadata written;
    QByteArray segments;
    if (exifMarker.size() + metadata.exif.size() > maxSegment)
        written.leftOut.exif = metadata.exif;
    else if (!metadata.exif.isEmpty())
        segments += segment(exifMarker + metadata.exif);
    const QByteArray xmp = metadata.xmp.isEmpty() ? QByteArray() : xmpSegments(metadata.xmp);
    if (xmp.isEmpty())
        written.leftOut.xmp = metadata.xmp;
    // After the JFIF segment, which must be the first.
    qsizetype at = 2;
    if (uchar(file[3]) == 0xe0)
        at += 2 + qFromBigEndian<quint16>(file.constData() + 4);
    written.file = file.left(at) + segments + xmp + file.mid(at);
    return written;
}

} // namespace conversion
