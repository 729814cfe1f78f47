// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/metadata/Metadata.h"

// EXIF is a TIFF file without an image; in a TIFF image its fields are mixed with those of the image.
namespace conversion
{

// From a TIFF file. The fields are returned as separate EXIF data.
Metadata readTiffMetadata(QIODevice &device);
// Into a little-endian TIFF file, as written by this program. Other files are returned unchanged.
QByteArray withMetadataInTiff(const QByteArray &file, const Metadata &metadata);

} // namespace conversion
