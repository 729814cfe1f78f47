// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/BitmapDecoder.h"

#include "ExtractIcon/engine/Bytes.h"

#include <QList>

#include <algorithm>
#include <bit>
#include <cstdlib>

namespace icons
{

namespace
{

constexpr quint32 infoHeaderBytes = 40; // BITMAPINFOHEADER
constexpr quint32 maxHeaderSize = 124;  // BITMAPV5HEADER
constexpr quint32 masksInHeader = 56;   // from this size on, the masks are header fields
constexpr quint32 uncompressed = 0;     // BI_RGB
constexpr quint32 masksAreGiven = 3;    // BI_BITFIELDS
constexpr qint64 maskTableAt = 40;      // inside or after the header, the offset is the same
constexpr QRgb opaque = 0xff000000;

// Rows are padded to a multiple of four bytes.
qint64 rowBytes(int width, int bits)
{
    return (qint64(width) * bits + 31) / 32 * 4;
}

// Reads the colour masks; returns their size between header and colour table.
qint64 readMasks(QByteArrayView bytes, quint32 headerSize, quint32 compression, BitmapHeader &header)
{
    if (compression == masksAreGiven) {
        header.redMask = number<quint32>(bytes, maskTableAt);
        header.greenMask = number<quint32>(bytes, maskTableAt + 4);
        header.blueMask = number<quint32>(bytes, maskTableAt + 8);
        if (headerSize >= masksInHeader)
            header.alphaMask = number<quint32>(bytes, maskTableAt + 12);
        else if (header.bits == 32) // the usual alpha byte, which the header does not declare
            header.alphaMask = ~(header.redMask | header.greenMask | header.blueMask);
        return headerSize == infoHeaderBytes ? 12 : 0;
    }
    if (header.bits == 16) {
        header.redMask = 0x7c00;
        header.greenMask = 0x03e0;
        header.blueMask = 0x001f;
    } else {
        header.redMask = 0x00ff0000;
        header.greenMask = 0x0000ff00;
        header.blueMask = 0x000000ff;
        header.alphaMask = header.bits == 32 ? opaque : 0;
    }
    return 0;
}

// Extracts the bits of a mask and scales them to eight bits.
class Channel
{
public:
    explicit Channel(quint32 mask) : m_mask(mask)
    {
        if (mask != 0) {
            m_shift = std::countr_zero(mask);
            m_most = mask >> m_shift;
        }
    }
    quint32 of(quint32 pixel) const
    {
        if (m_most == 0)
            return 0;
        const quint64 value = (pixel & m_mask) >> m_shift;
        return static_cast<quint32>((value * 255 + m_most / 2) / m_most);
    }

private:
    quint32 m_mask = 0;
    int m_shift = 0;
    quint32 m_most = 0;
};

using Line = const uchar *;

QList<QRgb> colourTable(QByteArrayView bytes, const BitmapHeader &header)
{
    QList<QRgb> table(qsizetype(1) << header.bits, opaque);
    for (qsizetype i = 0; i < std::min<qint64>(header.colours, table.size()); ++i)
        table[i] = number<quint32>(bytes, header.colourTable + i * 4) | opaque;
    return table;
}

// 1, 4 or 8 bits per pixel, the first pixel in the highest bits.
void indexedRow(Line from, QRgb *to, int width, int bits, const QList<QRgb> &table)
{
    const int perByte = 8 / bits;
    const int mask = (1 << bits) - 1;
    for (int x = 0; x < width; ++x) {
        const int shift = 8 - bits * (x % perByte + 1);
        to[x] = table[(from[x / perByte] >> shift) & mask];
    }
}

void row24(Line from, QRgb *to, int width)
{
    for (int x = 0; x < width; ++x, from += 3)
        to[x] = opaque | QRgb(from[2]) << 16 | QRgb(from[1]) << 8 | from[0];
}

void maskedRow(Line from, QRgb *to, int width, const BitmapHeader &header)
{
    const Channel red(header.redMask), green(header.greenMask), blue(header.blueMask),
        alpha(header.alphaMask);
    const int bytes = header.bits / 8;
    for (int x = 0; x < width; ++x, from += bytes) {
        const quint32 pixel =
            bytes == 2 ? qFromLittleEndian<quint16>(from) : qFromLittleEndian<quint32>(from);
        to[x] = alpha.of(pixel) << 24 | red.of(pixel) << 16 | green.of(pixel) << 8 | blue.of(pixel);
    }
}

// The common 32-bit layout, identical to QImage's.
bool isPlain32(const BitmapHeader &header)
{
    return header.bits == 32 && header.redMask == 0xff0000 && header.greenMask == 0xff00 &&
           header.blueMask == 0xff && header.alphaMask == opaque;
}

// Calls `row` with each stored row and the image line that it belongs to.
template <class Row>
void eachRow(QByteArrayView stored, qint64 stride, const BitmapHeader &header, QImage &image, Row row)
{
    const int height = header.size.height();
    for (int y = 0; y < height; ++y) {
        const int line = header.topDown ? y : height - 1 - y;
        row(reinterpret_cast<Line>(stored.data()) + y * stride,
            reinterpret_cast<QRgb *>(image.scanLine(line)));
    }
}

void paintPixels(QByteArrayView bytes, QByteArrayView stored, qint64 stride, const BitmapHeader &header,
                 QImage &image)
{
    const int width = header.size.width();
    if (header.bits <= 8) {
        const QList<QRgb> table = colourTable(bytes, header);
        eachRow(stored, stride, header, image,
                [&](Line from, QRgb *to) { indexedRow(from, to, width, header.bits, table); });
    } else if (header.bits == 24) {
        eachRow(stored, stride, header, image, [&](Line from, QRgb *to) { row24(from, to, width); });
    } else if (isPlain32(header)) {
        eachRow(stored, stride, header, image, [&](Line from, QRgb *to) {
            for (int x = 0; x < width; ++x)
                to[x] = qFromLittleEndian<quint32>(from + qsizetype(x) * 4);
        });
    } else {
        eachRow(stored, stride, header, image,
                [&](Line from, QRgb *to) { maskedRow(from, to, width, header); });
    }
}

bool anyAlpha(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (std::any_of(line, line + image.width(), [](QRgb pixel) { return qAlpha(pixel) != 0; }))
            return true;
    }
    return false;
}

void applyMask(QByteArrayView mask, const BitmapHeader &header, QImage &image)
{
    const int width = header.size.width();
    eachRow(mask, rowBytes(width, 1), header, image, [&](Line from, QRgb *to) {
        for (int x = 0; x < width; ++x)
            to[x] = (from[x / 8] & (0x80 >> (x % 8))) != 0 ? 0 : to[x] | opaque;
    });
}

bool isKnownDepth(int bits)
{
    return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
}

} // namespace

std::optional<BitmapHeader> bitmapHeader(QByteArrayView bytes)
{
    const auto headerSize = number<quint32>(bytes, 0);
    if (headerSize < infoHeaderBytes || headerSize > maxHeaderSize || bytes.size() < qint64(headerSize))
        return std::nullopt;
    const qint64 width = number<qint32>(bytes, 4);
    const qint64 height = number<qint32>(bytes, 8);
    const qint64 iconHeight = std::abs(height) / 2;
    const auto compression = number<quint32>(bytes, 16);
    BitmapHeader header;
    header.bits = number<quint16>(bytes, 14);
    const bool usable = compression == uncompressed ||
                        (compression == masksAreGiven && (header.bits == 16 || header.bits == 32));
    if (width < 1 || width > maxSide || iconHeight < 1 || iconHeight > maxSide || !usable ||
        !isKnownDepth(header.bits))
        return std::nullopt;
    header.size = QSize(int(width), int(iconHeight));
    header.topDown = height < 0;
    header.colourTable = headerSize + readMasks(bytes, headerSize, compression, header);
    const auto used = number<quint32>(bytes, 32);
    // Above eight bits the colour table is only a hint, but still precedes the pixels.
    header.colours = used != 0 || header.bits > 8 ? qint64(used) : qint64(1) << header.bits;
    if (header.bits <= 8 && header.colours > qint64(1) << header.bits)
        return std::nullopt;
    header.pixels = header.colourTable + header.colours * 4;
    return header;
}

std::optional<DecodedBitmap> decodeBitmap(QByteArrayView bytes)
{
    const std::optional<BitmapHeader> header = bitmapHeader(bytes);
    if (!header)
        return std::nullopt;
    const qint64 stride = rowBytes(header->size.width(), header->bits);
    const qint64 pixelBytes = stride * header->size.height();
    const qint64 maskBytes = rowBytes(header->size.width(), 1) * header->size.height();
    const std::optional<QByteArrayView> pixels = range(bytes, header->pixels, pixelBytes);
    const std::optional<QByteArrayView> mask = range(bytes, header->pixels + pixelBytes, maskBytes);
    if (!pixels)
        return std::nullopt;
    QImage image(header->size, QImage::Format_ARGB32);
    if (image.isNull())
        return std::nullopt;
    paintPixels(bytes, *pixels, stride, *header, image);
    const bool ownAlpha = header->alphaMask != 0 && anyAlpha(image);
    // Some programs omit the mask when it is not needed. A truncated mask is an error.
    const bool maskLeftOut = bytes.size() == header->pixels + pixelBytes;
    if (!mask && !(ownAlpha && maskLeftOut))
        return std::nullopt;
    if (!ownAlpha)
        applyMask(*mask, *header, image);
    return DecodedBitmap{image, header->bits};
}

} // namespace icons
