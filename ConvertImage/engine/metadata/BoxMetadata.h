// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/metadata/Metadata.h"

// EXIF and XMP in the boxes of ISO base media files (ISO/IEC 14496-12): JPEG XL has one box for each, HEIF,
// HEIC and AVIF list them as items beside the picture (ISO/IEC 23008-12).
namespace conversion
{

extern const QByteArray jxlSignature;

// The device stands anywhere.
Metadata readJxlMetadata(QIODevice &device);
Metadata readHeifMetadata(QIODevice &device);

QByteArray withMetadataInJxl(const QByteArray &file, const Metadata &metadata);
// What the file has of it already is replaced. A file with items that are not understood comes back as it is.
QByteArray withMetadataInHeif(const QByteArray &file, const Metadata &metadata);

} // namespace conversion
