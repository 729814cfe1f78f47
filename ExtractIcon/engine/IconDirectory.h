// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>

// An icon's directory in its two forms: the icon group resource of a module (14-byte entries with the id of
// an image resource), and the icon file (16-byte entries with the offset of the image). Both begin with the
// same six bytes; all numbers are little-endian.
namespace icons
{

inline constexpr qsizetype headerBytes = 6;
inline constexpr qsizetype groupEntryBytes = 14;
inline constexpr qsizetype fileEntryBytes = 16;
inline constexpr quint16 iconType = 1; // 2 is a cursor

// Icons have about a dozen images. Many more, which may all refer to the same bytes, are an attempt to
// exhaust memory.
inline constexpr qsizetype maxImages = 256;

struct DirectoryEntry {
    quint8 width = 0; // in pixels; 0 means 256 or "see the image"
    quint8 height = 0;
    quint8 colours = 0; // 0 for 256 or more
    quint8 reserved = 0;
    quint16 planes = 0;
    quint16 bits = 0;  // per pixel
    quint32 size = 0;  // image size in bytes
    quint32 place = 0; // offset of the image in a file, resource id in a group

    friend bool operator==(const DirectoryEntry &, const DirectoryEntry &) = default;
};

struct IconDirectory {
    quint16 reserved = 0;
    quint16 type = iconType;
    QList<DirectoryEntry> entries; // in stored order

    friend bool operator==(const IconDirectory &, const IconDirectory &) = default;
};

// nullopt without a header, or with too many images. A truncated group returns the complete entries.
std::optional<IconDirectory> parseGroup(QByteArrayView bytes);

// nullopt if it is not an icon file: a cursor, a truncated directory, no image or too many. Entries that
// point outside the file are returned too; imageBytes() checks them.
std::optional<IconDirectory> parseIconFile(QByteArrayView file);

// The image of an entry of parseIconFile(); nullopt if it is empty or not completely inside the file.
std::optional<QByteArrayView> imageBytes(QByteArrayView file, const DirectoryEntry &entry);

// Builds an icon file from header and entries; sizes and offsets are set from the images, of which there must
// be one per entry. Empty if the file would exceed 32-bit offsets.
QByteArray iconFile(const IconDirectory &directory, const QList<QByteArray> &images);

} // namespace icons
