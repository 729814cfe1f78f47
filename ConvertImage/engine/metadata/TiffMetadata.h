// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/metadata/Metadata.h"

// EXIF is a TIFF file without a picture; in a TIFF with one its fields stand beside those of the picture.
namespace conversion
{

// From a TIFF file. The fields come out as EXIF of its own.
Metadata readTiffMetadata(QIODevice &device);
// Into a TIFF file of little-endian order, as it is written here. Other files come back as they are.
QByteArray withMetadataInTiff(const QByteArray &file, const Metadata &metadata);

} // namespace conversion
