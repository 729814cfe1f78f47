// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Metadata.h"

#include "ConvertImage/engine/ExifEditor.h"

#include <QRegularExpression>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstring>

namespace conversion
{

namespace
{

constexpr qint64 maxBytes = 4 << 20; // of one of the two
constexpr int maxParts = 10'000;     // chunks, segments or boxes of a file

const QByteArray exifMarker("Exif\0\0", 6);
const QByteArray xmpMarker("http://ns.adobe.com/xap/1.0/\0", 29);
const QByteArray pngSignature("\x89PNG\r\n\x1a\n", 8);
const QByteArray pngXmpKeyword("XML:com.adobe.xmp\0", 18);
const QByteArray jxlSignature("\0\0\0\x0cJXL \r\n\x87\n", 12);

QByteArray withoutMarker(const QByteArray &exif)
{
    return exif.startsWith(exifMarker) ? exif.mid(exifMarker.size()) : exif;
}

quint32 bigNumber(const QByteArray &bytes, qsizetype at)
{
    return qFromBigEndian<quint32>(bytes.constData() + at);
}

QByteArray readPart(QIODevice &device, qint64 bytes)
{
    return bytes <= maxBytes ? device.read(bytes) : QByteArray();
}

// Segments up to the picture itself.
Metadata readJpeg(QIODevice &device)
{
    constexpr uchar app1 = 0xe1;
    constexpr uchar startOfScan = 0xda;
    Metadata found;
    qint64 at = 2;
    for (int part = 0; part < maxParts && device.seek(at); ++part) {
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

Metadata readPng(QIODevice &device)
{
    Metadata found;
    qint64 at = pngSignature.size();
    for (int part = 0; part < maxParts && device.seek(at); ++part) {
        const QByteArray header = device.read(8);
        if (header.size() < 8 || header.endsWith("IEND"))
            break;
        const qint64 length = bigNumber(header, 0);
        if (header.endsWith("eXIf"))
            found.exif = withoutMarker(readPart(device, length));
        else if (header.endsWith("iTXt") && found.xmp.isEmpty())
            found.xmp = pngXmp(readPart(device, length));
        at += 12 + length;
    }
    return found;
}

Metadata readWebp(QIODevice &device)
{
    Metadata found;
    qint64 at = 12;
    for (int part = 0; part < maxParts && device.seek(at); ++part) {
        const QByteArray header = device.read(8);
        if (header.size() < 8)
            break;
        const qint64 length = qFromLittleEndian<quint32>(header.constData() + 4);
        if (header.startsWith("EXIF"))
            found.exif = withoutMarker(readPart(device, length));
        else if (header.startsWith("XMP "))
            found.xmp = readPart(device, length);
        at += 8 + length + length % 2;
    }
    return found;
}

// Boxes that are packed with brotli are passed over.
Metadata readJxl(QIODevice &device)
{
    Metadata found;
    qint64 at = 0;
    for (int part = 0; part < maxParts && device.seek(at); ++part) {
        const QByteArray header = device.read(8);
        if (header.size() < 8)
            break;
        qint64 length = bigNumber(header, 0);
        qint64 headerBytes = 8;
        if (length == 1) {
            const QByteArray large = device.read(8);
            length = large.size() == 8 ? qFromBigEndian<qint64>(large.constData()) : 0;
            headerBytes = 16;
        } else if (length == 0) {
            length = device.size() - at;
        }
        if (length < headerBytes || length > device.size() - at)
            break;
        if (header.endsWith("Exif")) {
            const QByteArray content = readPart(device, length - headerBytes);
            const qint64 start = content.size() > 4 ? 4 + qint64(bigNumber(content, 0)) : content.size();
            found.exif = withoutMarker(content.mid(std::min<qint64>(start, content.size())));
        } else if (header.endsWith("xml ")) {
            found.xmp = readPart(device, length - headerBytes);
        }
        at += length;
    }
    return found;
}

QByteArray bigBytes(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray littleBytes(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
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

QByteArray jxlBox(const QByteArray &type, const QByteArray &content)
{
    return bigBytes(static_cast<quint32>(content.size() + 8)) + type + content;
}

QByteArray withMetadataInJxl(const QByteArray &file, const Metadata &metadata)
{
    QByteArray boxes = file;
    if (file.startsWith("\xff\x0a"))
        boxes = jxlSignature + jxlBox("ftyp", QByteArray("jxl \0\0\0\0jxl ", 12)) + jxlBox("jxlc", file);
    else if (!file.startsWith(jxlSignature))
        return file;
    if (!metadata.exif.isEmpty())
        boxes += jxlBox("Exif", QByteArray(4, '\0') + metadata.exif);
    if (!metadata.xmp.isEmpty())
        boxes += jxlBox("xml ", metadata.xmp);
    return boxes;
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
        return readJxl(device);
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
    default:
        return file;
    }
}

} // namespace conversion
