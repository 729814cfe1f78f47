// SPDX-License-Identifier: GPL-3.0-or-later
#include "Exif.h"

#include <QByteArray>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>

namespace webp
{

namespace
{

constexpr qint64 chunkHeaderBytes = 8;

// The EXIF data, or nothing. It is announced in the first chunk, so most files are left after twenty bytes.
QByteArray exifOf(QIODevice &device)
{
    constexpr char announced = 8;
    constexpr qint64 maxBytes = 64 << 10; // the orientation stands in the first directory
    if (!device.seek(0))
        return {};
    const QByteArray start = device.read(21);
    if (start.size() < 21 || !start.startsWith("RIFF") || start.mid(8, 8) != "WEBPVP8X" ||
        !(start[20] & announced))
        return {};
    for (qint64 at = 12; device.seek(at);) {
        const QByteArray header = device.read(chunkHeaderBytes);
        if (header.size() < chunkHeaderBytes)
            return {};
        const auto size = qFromLittleEndian<quint32>(header.constData() + 4);
        if (header.startsWith("EXIF"))
            return device.read(std::min<qint64>(size, maxBytes));
        at += chunkHeaderBytes + size + size % 2;
    }
    return {};
}

template <typename Number>
Number numberAt(const QByteArray &bytes, qsizetype at, bool bigEndian)
{
    if (at < 0 || at > bytes.size() - qsizetype(sizeof(Number)))
        return 0;
    const char *data = bytes.constData() + at;
    return bigEndian ? qFromBigEndian<Number>(data) : qFromLittleEndian<Number>(data);
}

// 1 to 8; 0 for none. The data is a TIFF file of its own; some writers put JPEG's marker before it.
int orientationIn(QByteArray exif)
{
    constexpr quint16 orientationTag = 0x112;
    constexpr qsizetype entryBytes = 12;
    if (exif.startsWith(QByteArray("Exif\0\0", 6)))
        exif.remove(0, 6);
    const bool big = exif.startsWith("MM");
    if (!big && !exif.startsWith("II"))
        return 0;
    const qsizetype directory = numberAt<quint32>(exif, 4, big);
    const int entries = numberAt<quint16>(exif, directory, big);
    for (int entry = 0; entry < entries; ++entry) {
        const qsizetype at = directory + 2 + entry * entryBytes;
        if (numberAt<quint16>(exif, at, big) == orientationTag)
            return numberAt<quint16>(exif, at + 8, big);
    }
    return 0;
}

} // namespace

QImageIOHandler::Transformations storedTransformation(QIODevice &device)
{
    const qint64 before = device.pos();
    const int orientation = device.isSequential() ? 0 : orientationIn(exifOf(device));
    device.seek(before);
    switch (orientation) {
    case 2:
        return QImageIOHandler::TransformationMirror;
    case 3:
        return QImageIOHandler::TransformationRotate180;
    case 4:
        return QImageIOHandler::TransformationFlip;
    case 5:
        return QImageIOHandler::TransformationFlipAndRotate90;
    case 6:
        return QImageIOHandler::TransformationRotate90;
    case 7:
        return QImageIOHandler::TransformationMirrorAndRotate90;
    case 8:
        return QImageIOHandler::TransformationRotate270;
    default:
        return QImageIOHandler::TransformationNone;
    }
}

} // namespace webp
