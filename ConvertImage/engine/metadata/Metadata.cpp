// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/metadata/Metadata.h"

#include "ConvertImage/engine/metadata/BoxMetadata.h"
#include "ConvertImage/engine/metadata/ExifEditor.h"
#include "ConvertImage/engine/metadata/JpegMetadata.h"
#include "ConvertImage/engine/metadata/MetadataBytes.h"
#include "ConvertImage/engine/metadata/TiffMetadata.h"
#include "ConvertImage/engine/metadata/XmpPacket.h"

#include <array>
#include <cstring>
#include <utility>

namespace conversion
{

namespace
{

const QByteArray pngSignature("\x89PNG\r\n\x1a\n", 8);
const QByteArray pngXmpKeyword("XML:com.adobe.xmp\0", 18);

// keyword, NUL, compression flag, method, language, NUL, translated keyword, NUL, text
QByteArray pngXmp(const QByteArray &chunk)
{
    const qsizetype flag = pngXmpKeyword.size();
    if (!chunk.startsWith(pngXmpKeyword) || chunk.size() < flag + 4 || chunk[flag] != 0)
        return {};
    const qsizetype language = chunk.indexOf('\0', flag + 2);
    const qsizetype keyword = language < 0 ? -1 : chunk.indexOf('\0', language + 1);
    return keyword < 0 ? QByteArray() : chunk.mid(keyword + 1);
}

// The layout of a chunk: length and type, in the order and with the padding of the format.
struct ChunkLayout {
    qint64 first; // after the signature
    bool typeFirst;
    int trailer; // bytes after the content
    bool padded; // to an even length
};

// Up to the end of the file, or to a chunk of type "IEND".
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
        if (type == "eXIf") {
            found.isExifCut = isTooLong(device, length);
            found.exif = withoutExifMarker(readPart(device, length));
        } else if (type == "iTXt" && found.xmp.isEmpty()) {
            if (isTooLong(device, length) && device.read(pngXmpKeyword.size()) == pngXmpKeyword)
                found.isXmpCut = true;
            found.xmp = pngXmp(readPart(device, length));
        }
    });
    return found;
}

Metadata readWebp(QIODevice &device)
{
    Metadata found;
    forEachChunk(device, {12, true, 0, true}, [&](const QByteArray &type, qint64 length) {
        if (type == "EXIF") {
            found.isExifCut = isTooLong(device, length);
            found.exif = withoutExifMarker(readPart(device, length));
        } else if (type == "XMP ") {
            found.isXmpCut = isTooLong(device, length);
            found.xmp = readPart(device, length);
        }
    });
    return found;
}

// CRC-32 as used by PNG (ISO 3309).
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

// The extended WebP header: flags, then width - 1 and height - 1 in 24 bits each. Empty if the chunks are not
// understood.
QByteArray extendedHeader(const QByteArray &chunks)
{
    constexpr char alphaFlag = 0x10;
    constexpr qsizetype content = 8;
    // A local copy: with the array itself, GCC warns about reading past the end of an empty one.
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

} // namespace

Metadata readMetadata(QIODevice &device)
{
    if (device.isSequential() || !device.seek(0))
        return {};
    const QByteArray start = device.read(12);
    if (start.startsWith("\xff\xd8"))
        return readJpegMetadata(device);
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

WithMetadata withMetadata(const QByteArray &file, Target target, const Metadata &metadata)
{
    if (metadata.isEmpty())
        return {file, {}};
    if (target == Target::Jpg)
        return withMetadataInJpeg(file, metadata);
    QByteArray written = file;
    switch (target) {
    case Target::Png:
        written = withMetadataInPng(file, metadata);
        break;
    case Target::Webp:
        written = withMetadataInWebp(file, metadata);
        break;
    case Target::Jxl:
        written = withMetadataInJxl(file, metadata);
        break;
    case Target::Avif:
    case Target::Heic:
    case Target::Heif:
        written = withMetadataInHeif(file, metadata);
        break;
    case Target::Tiff:
        written = withMetadataInTiff(file, metadata);
        break;
    default:
        break;
    }
    const bool isUnderstood = written.size() > file.size();
    return {std::move(written), isUnderstood ? Metadata() : metadata};
}

} // namespace conversion
