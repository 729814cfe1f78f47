// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/metadata/Metadata.h"

// EXIF and XMP in the segments before a JPEG's picture. A segment holds 64 KB: EXIF has one, XMP goes on in
// others.
namespace conversion
{

// Of a device that is a JPEG.
Metadata readJpegMetadata(QIODevice &device);

// Whether the end of a JPEG's picture is missing: decoders make grey of what is not there, and report
// success. False for any other file, and for one in which the picture's data is not found.
bool isCutOffJpeg(QIODevice &device);

// EXIF that is too long, and XMP that cannot be split, are left out.
WithMetadata withMetadataInJpeg(const QByteArray &file, const Metadata &metadata);

} // namespace conversion
