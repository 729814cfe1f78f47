// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/metadata/Metadata.h"

// EXIF and XMP in the segments before a JPEG's image data. A segment holds 64 KB: EXIF is limited to one, XMP
// continues in others.
namespace conversion
{

// The device must contain a JPEG.
Metadata readJpegMetadata(QIODevice &device);

// Whether a JPEG's image data is truncated: decoders fill the missing part with grey and report success.
// False for any other file, and if the image data was not found.
bool isCutOffJpeg(QIODevice &device);

// EXIF that is too long, and XMP that cannot be split, are dropped.
WithMetadata withMetadataInJpeg(const QByteArray &file, const Metadata &metadata);

} // namespace conversion
