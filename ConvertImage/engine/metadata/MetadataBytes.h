// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QtEndian>

// Shared by the metadata readers and writers.
namespace conversion
{

inline constexpr qint64 maxMetadataBytes = 4 << 20; // for EXIF and XMP each
inline constexpr int maxMetadataParts = 10'000;     // chunks, segments or boxes per file

inline const QByteArray exifMarker("Exif\0\0", 6);

inline QByteArray withoutExifMarker(const QByteArray &exif)
{
    return exif.startsWith(exifMarker) ? exif.mid(exifMarker.size()) : exif;
}

inline quint32 bigNumber(const QByteArray &bytes, qsizetype at)
{
    return qFromBigEndian<quint32>(bytes.constData() + at);
}

inline QByteArray bigBytes(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

inline QByteArray littleBytes(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

// Whether the data exists but exceeds the limit for metadata.
inline bool isTooLong(const QIODevice &device, qint64 bytes)
{
    return bytes > maxMetadataBytes && bytes <= device.size();
}

// Empty if it exceeds the limit for metadata.
inline QByteArray readPart(QIODevice &device, qint64 bytes)
{
    return bytes >= 0 && bytes <= maxMetadataBytes ? device.read(bytes) : QByteArray();
}

} // namespace conversion
