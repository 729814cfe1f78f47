// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/IconWriter.h"

#include "ExtractIcon/engine/Bytes.h"
#include "ExtractIcon/engine/IconDirectory.h"

#include <QBuffer>

namespace icons
{

namespace
{

constexpr int maxSide = 256; // limit of the directory's 8-bit fields

QByteArray png(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "PNG") ? bytes : QByteArray();
}

void appendHeader(QByteArray &bytes, int side, qsizetype imageSize)
{
    append<quint32>(bytes, 40);
    append<qint32>(bytes, side);
    append<qint32>(bytes, 2 * side); // height of image plus mask
    append<quint16>(bytes, 1);
    append<quint16>(bytes, 32);
    append<quint32>(bytes, 0); // BI_RGB
    append<quint32>(bytes, static_cast<quint32>(imageSize));
    bytes.append(16, '\0'); // image size, resolution and colour counts
}

// The mask hides fully transparent pixels, for programs that ignore alpha. Such programs invert the screen
// where a masked pixel has a colour, so these are written as 0.
QByteArray bitmap(const QImage &image)
{
    const int side = image.width();
    const qsizetype maskRow = (qsizetype(side) + 31) / 32 * 4;
    QByteArray mask(maskRow * side, '\0');
    QByteArray bytes;
    appendHeader(bytes, side, qsizetype(side) * side * 4 + mask.size());
    for (int y = side - 1; y >= 0; --y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        char *bits = mask.data() + (side - 1 - y) * maskRow;
        for (int x = 0; x < side; ++x) {
            const bool hidden = qAlpha(line[x]) == 0;
            append<quint32>(bytes, hidden ? 0 : line[x]);
            if (hidden)
                bits[x / 8] = static_cast<char>(bits[x / 8] | 0x80 >> (x % 8));
        }
    }
    return bytes + mask;
}

} // namespace

QByteArray makeIconFile(const QList<QImage> &images)
{
    IconDirectory directory;
    QList<QByteArray> stored;
    for (const QImage &image : images) {
        const int side = image.width();
        if (side < 1 || side > maxSide || image.height() != side)
            return {};
        const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
        stored.append(side >= pngFrom ? png(plain) : bitmap(plain));
        if (stored.last().isEmpty())
            return {};
        DirectoryEntry entry;
        entry.width = entry.height = static_cast<quint8>(side % maxSide);
        entry.planes = 1;
        entry.bits = 32;
        directory.entries.append(entry);
    }
    return images.isEmpty() ? QByteArray() : iconFile(directory, stored);
}

} // namespace icons
