// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/metadata/Metadata.h"

// EXIF and XMP in the boxes of ISO base media files (ISO/IEC 14496-12): JPEG XL has a box for each; HEIF,
// HEIC and AVIF store them as items beside the image (ISO/IEC 23008-12).
namespace conversion
{

extern const QByteArray jxlSignature;

// The device may be at any position.
Metadata readJxlMetadata(QIODevice &device);
Metadata readHeifMetadata(QIODevice &device);

QByteArray withMetadataInJxl(const QByteArray &file, const Metadata &metadata);
// Replaces existing metadata. A file with items that are not understood is returned unchanged.
QByteArray withMetadataInHeif(const QByteArray &file, const Metadata &metadata);

} // namespace conversion
