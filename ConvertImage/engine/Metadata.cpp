// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Metadata.h"

#include "ConvertImage/engine/BoxMetadata.h"
#include "ConvertImage/engine/ExifEditor.h"
#include "ConvertImage/engine/MetadataBytes.h"
#include "ConvertImage/engine/TiffMetadata.h"

#include <QRegularExpression>

#include <array>
#include <cstring>

namespace conversion
{

namespace
{

const QByteArray xmpMarker("http://ns.adobe.com/xap/1.0/\0", 29);
const QByteArray pngSignature("\x89PNG\r\n\x1a\n", 8);
const QByteArray pngXmpKeyword("XML:com.adobe.xmp\0", 18);

// Segments up to the picture itself.
Metadata readJpeg(QIODevice &device)
{
    constexpr uchar app1 = 0xe1;
    constexpr uchar startOfScan = 0xda;
    Metadata found;
    qint64 at = 2;
    for (int part = 0; part < maxMetadataParts && device.seek(at); ++part) {
        const QByteArray header = device.read(4);
        if (header.size() < 4 || uchar(header[0]) != 0xff || uchar(header[1]) == startOfScan)
            break;
        const qint64 length = qFromBigEndian<quint16>(header.constData() + 2);
        if (length < 2)
            break;
        if (uchar(header[1]) == app1) {
            const QByteArray content = device.read(length - 2);
            if (found.exif.isEmpty() && content.startsWith(exifMarker))
                found.exif = content.mid(exifMarker.size());
            else if (found.xmp.isEmpty() && content.startsWith(xmpMarker))
                found.xmp = content.mid(xmpMarker.size());
        }
        at += 2 + length;
    }
    return found;
}

// keyword, NUL, compressed?, method, language, NUL, translated keyword, NUL, text
QByteArray pngXmp(const QByteArray &chunk)
{
    const qsizetype flag = pngXmpKeyword.size();
    if (!chunk.startsWith(pngXmpKeyword) || chunk.size() < flag + 4 || chunk[flag] != 0)
        return {};
    const qsizetype language = chunk.indexOf('\0', flag + 2);
    const qsizetype keyword = language < 0 ? -1 : chunk.indexOf('\0', language + 1);
    return keyword < 0 ? QByteArray() : chunk.mid(keyword + 1);
}

// How a chunk is told: a length and a type, in the order and with the padding of the format.
struct ChunkLayout {
    qint64 first; // behind the signature
    bool typeFirst;
    int trailer; // bytes behind the content
    bool padded; // to even lengths
};

// Until the end of the file, or a chunk of the type "IEND".
template <class Take>
void forEachChunk(QIODevice &device, const ChunkLayout &layout, Take take)
{
    qint64 at = layout.first;
    for (int part = 0; part < maxMetadataParts && device.seek(at); ++part) {
        const QByteArray header = device.read(8);
        const QByteArray type = layout.typeFirst ? header.left(4) : header.mid(4);
        if (header.size() < 8 || type == "IEND")
            return;
        const qint64 length =
            layout.typeFirst ? qFromLittleEndian<quint32>(header.constData() + 4) : bigNumber(header, 0);
        take(type, length);
        at += 8 + length + layout.trailer + (layout.padded ? length % 2 : 0);
    }
}

Metadata readPng(QIODevice &device)
{
    Metadata found;
    forEachChunk(device, {pngSignature.size(), false, 4, false}, [&](const QByteArray &type, qint64 length) {
        if (type == "eXIf")
            found.exif = withoutExifMarker(readPart(device, length));
        else if (type == "iTXt" && found.xmp.isEmpty())
            found.xmp = pngXmp(readPart(device, length));
    });
    return found;
}

Metadata readWebp(QIODevice &device)
{
    Metadata found;
    forEachChunk(device, {12, true, 0, true}, [&](const QByteArray &type, qint64 length) {
        if (type == "EXIF")
            found.exif = withoutExifMarker(readPart(device, length));
        else if (type == "XMP ")
            found.xmp = readPart(device, length);
    });
    return found;
}

QByteArray jpegSegment(const QByteArray &marker, const QByteArray &content)
{
    const qsizetype length = 2 + marker.size() + content.size();
    if (content.isEmpty() || length > 0xffff)
        return {};
    QByteArray header("\xff\xe1\0\0", 4);
    qToBigEndian(static_cast<quint16>(length), header.data() + 2);
    return header + marker + content;
}

QByteArray withMetadataInJpeg(const QByteArray &file, const Metadata &metadata)
{
    if (!file.startsWith("\xff\xd8") || file.size() < 6)
        return file;
    // Behind JFIF's own segment, which is to be the first.
    qsizetype at = 2;
    if (uchar(file[3]) == 0xe0)
        at += 2 + qFromBigEndian<quint16>(file.constData() + 4);
    return file.left(at) + jpegSegment(exifMarker, metadata.exif) + jpegSegment(xmpMarker, metadata.xmp) +
           file.mid(at);
}

// CRC-32 as PNG has it (ISO 3309).
quint32 checksum(const QByteArray &bytes)
{
    quint32 sum = 0xffffffffu;
    for (const char byte : bytes) {
        sum ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum & 1 ? 0xedb88320u ^ (sum >> 1) : sum >> 1;
    }
    return ~sum;
}

QByteArray pngChunk(const QByteArray &type, const QByteArray &content)
{
    const QByteArray body = type + content;
    return bigBytes(static_cast<quint32>(content.size())) + body + bigBytes(checksum(body));
}

QByteArray withMetadataInPng(const QByteArray &file, const Metadata &metadata)
{
    constexpr qsizetype headerEnd = 8 + 25; // signature and IHDR
    if (!file.startsWith(pngSignature) || file.size() < headerEnd)
        return file;
    QByteArray chunks;
    if (!metadata.exif.isEmpty())
        chunks += pngChunk("eXIf", metadata.exif);
    if (!metadata.xmp.isEmpty())
        chunks += pngChunk("iTXt", pngXmpKeyword + QByteArray(4, '\0') + metadata.xmp);
    return file.left(headerEnd) + chunks + file.mid(headerEnd);
}

QByteArray webpChunk(const QByteArray &type, const QByteArray &content)
{
    QByteArray chunk = type + littleBytes(static_cast<quint32>(content.size())) + content;
    return content.size() % 2 != 0 ? chunk + '\0' : chunk;
}

// The header that a file with more than a picture has: flags, and the size less one in 24 bits each. Empty
// when the chunks are not understood.
QByteArray extendedHeader(const QByteArray &chunks)
{
    constexpr char alphaFlag = 0x10;
    constexpr qsizetype content = 8;
    // A copy of its own: over the array itself GCC warns of reading behind an empty one.
    std::array<char, 30> head{};
    if (static_cast<std::size_t>(chunks.size()) < head.size())
        return {};
    std::memcpy(head.data(), chunks.constData(), head.size());
    quint32 width = 0;
    quint32 height = 0;
    char flags = 0;
    if (chunks.startsWith("VP8L")) {
        const auto bits = qFromLittleEndian<quint32>(head.data() + content + 1);
        width = bits & 0x3fff;
        height = (bits >> 14) & 0x3fff;
        flags = (bits >> 28) & 1 ? alphaFlag : 0;
    } else if (chunks.startsWith("VP8 ")) {
        width = (qFromLittleEndian<quint16>(head.data() + content + 6) & 0x3fffu) - 1;
        height = (qFromLittleEndian<quint16>(head.data() + content + 8) & 0x3fffu) - 1;
    } else {
        return {};
    }
    return QByteArray(1, flags) + QByteArray(3, '\0') + littleBytes(width).left(3) +
           littleBytes(height).left(3);
}

QByteArray withMetadataInWebp(const QByteArray &file, const Metadata &metadata)
{
    constexpr char exifFlag = 0x08;
    constexpr char xmpFlag = 0x04;
    if (!file.startsWith("RIFF") || file.size() < 20)
        return file;
    QByteArray chunks = file.mid(12);
    if (!chunks.startsWith("VP8X")) {
        const QByteArray header = extendedHeader(chunks);
        if (header.isEmpty())
            return file;
        chunks.prepend(webpChunk("VP8X", header));
    }
    char flags = chunks[8];
    if (!metadata.exif.isEmpty()) {
        flags = static_cast<char>(flags | exifFlag);
        chunks += webpChunk("EXIF", metadata.exif);
    }
    if (!metadata.xmp.isEmpty()) {
        flags = static_cast<char>(flags | xmpFlag);
        chunks += webpChunk("XMP ", metadata.xmp);
    }
    chunks[8] = flags;
    return "RIFF" + littleBytes(static_cast<quint32>(chunks.size() + 4)) + "WEBP" + chunks;
}

QByteArray adaptedXmp(const QByteArray &xmp, bool keepPlace)
{
    if (xmp.isEmpty())
        return {};
    QString text = QString::fromUtf8(xmp);
    static const QRegularExpression orientation(
        QStringLiteral("(?:tiff:Orientation\\s*=\\s*[\"']|<tiff:Orientation>\\s*)\\K[0-9]+"));
    text.replace(orientation, QStringLiteral("1"));
    if (!keepPlace) {
        static const QRegularExpression place(
            QStringLiteral("\\sexif:GPS\\w+\\s*=\\s*(\"[^\"]*\"|'[^']*')|<(exif:GPS\\w+)[^>]*>.*?</\\2>"),
            QRegularExpression::DotMatchesEverythingOption);
        text.remove(place);
    }
    return text.toUtf8();
}

} // namespace

Metadata readMetadata(QIODevice &device)
{
    if (device.isSequential() || !device.seek(0))
        return {};
    const QByteArray start = device.read(12);
    if (start.startsWith("\xff\xd8"))
        return readJpeg(device);
    if (start.startsWith(pngSignature))
        return readPng(device);
    if (start.startsWith("RIFF") && start.endsWith("WEBP"))
        return readWebp(device);
    if (start == jxlSignature)
        return readJxlMetadata(device);
    if (start.mid(4, 4) == "ftyp")
        return readHeifMetadata(device);
    if (start.startsWith("II") || start.startsWith("MM"))
        return readTiffMetadata(device);
    return {};
}

Metadata adaptedMetadata(const Metadata &metadata, const QSize &size, bool keepPlace)
{
    return {adaptedExif(metadata.exif, size, keepPlace), adaptedXmp(metadata.xmp, keepPlace)};
}

QByteArray withMetadata(const QByteArray &file, Target target, const Metadata &metadata)
{
    if (metadata.isEmpty())
        return file;
    switch (target) {
    case Target::Jpg:
        return withMetadataInJpeg(file, metadata);
    case Target::Png:
        return withMetadataInPng(file, metadata);
    case Target::Webp:
        return withMetadataInWebp(file, metadata);
    case Target::Jxl:
        return withMetadataInJxl(file, metadata);
    case Target::Avif:
    case Target::Heic:
    case Target::Heif:
        return withMetadataInHeif(file, metadata);
    case Target::Tiff:
        return withMetadataInTiff(file, metadata);
    default:
        return file;
    }
}

} // namespace conversion
