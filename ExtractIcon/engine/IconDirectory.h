// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>

// The directory of an icon, in its two forms: the icon group among the resources of a module (14-byte
// entries that name an image resource) and the icon file (16-byte entries that tell where the image lies).
// Both begin with the same six bytes, and all numbers are little-endian.
namespace icons
{

inline constexpr qsizetype headerBytes = 6;
inline constexpr qsizetype groupEntryBytes = 14;
inline constexpr qsizetype fileEntryBytes = 16;
inline constexpr quint16 iconType = 1; // 2 is a cursor

// Icons have a dozen images. Many more, all of which may point to the same bytes, are an attempt to fill the
// memory.
inline constexpr qsizetype maxImages = 256;

struct DirectoryEntry {
    quint8 width = 0; // in pixels; 0 means 256 or "see the image"
    quint8 height = 0;
    quint8 colours = 0; // 0 for 256 and more
    quint8 reserved = 0;
    quint16 planes = 0;
    quint16 bits = 0;  // a pixel
    quint32 size = 0;  // of the image, in bytes
    quint32 place = 0; // in a file the offset of the image, in a group the id of its resource

    friend bool operator==(const DirectoryEntry &, const DirectoryEntry &) = default;
};

struct IconDirectory {
    quint16 reserved = 0;
    quint16 type = iconType;
    QList<DirectoryEntry> entries; // in the order in which they are stored

    friend bool operator==(const IconDirectory &, const IconDirectory &) = default;
};

// Empty when there is no header, or too many images. Of a group that ends early the entries that are whole.
std::optional<IconDirectory> parseGroup(QByteArrayView bytes);

// Empty for what is no icon file: a cursor, a directory that is not whole, no image or too many. Entries that
// point out of the file are part of the result; imageBytes() tells.
std::optional<IconDirectory> parseIconFile(QByteArrayView file);

// The image of an entry of parseIconFile(); empty when it is not wholly inside the file or has no size.
std::optional<QByteArrayView> imageBytes(QByteArrayView file, const DirectoryEntry &entry);

// An icon file of that header and those entries; size and offset of an entry are those of its image, whatever
// the entry says. As many images as entries. Empty when the file would be larger than its 32-bit offsets
// reach.
QByteArray iconFile(const IconDirectory &directory, const QList<QByteArray> &images);

} // namespace icons
