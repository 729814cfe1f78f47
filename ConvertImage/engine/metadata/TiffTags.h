// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <array>

// Shared by EXIF data and TIFF files: tags, types and sizes of TIFF 6.0 and EXIF 2.32. The tag for XMP in a
// TIFF file is defined by the XMP standard.
namespace conversion::tiff
{

inline constexpr qint64 headerBytes = 8;
inline constexpr int entryBytes = 12; // per directory entry

inline constexpr quint16 imageWidthTag = 0x0100;
inline constexpr quint16 imageHeightTag = 0x0101;
inline constexpr quint16 orientationTag = 0x0112;
inline constexpr quint16 thumbnailOffsetTag = 0x0201;
inline constexpr quint16 thumbnailLengthTag = 0x0202;
inline constexpr quint16 xmpTag = 700;
inline constexpr quint16 exifDirectoryTag = 0x8769;
inline constexpr quint16 placeDirectoryTag = 0x8825;
inline constexpr quint16 widthTag = 0xa002;
inline constexpr quint16 heightTag = 0xa003;
inline constexpr quint16 interoperabilityTag = 0xa005;

inline constexpr quint16 byteType = 1;
inline constexpr quint16 shortType = 3;
inline constexpr quint16 longType = 4;
inline constexpr std::array<int, 14> bytesOfType{0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};

} // namespace conversion::tiff
