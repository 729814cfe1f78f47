// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

#include <QIODevice>
#include <QSize>

namespace conversion
{

// Metadata of a camera or editor. The colour profile is not included: it belongs to the QImage.
struct Metadata {
    QByteArray exif; // a TIFF structure, without the container's prefix
    QByteArray xmp;  // XML
    // The source contains more than the limit for reading, and that part is not included.
    bool isExifCut = false;
    bool isXmpCut = false;

    bool isEmpty() const { return exif.isEmpty() && xmp.isEmpty(); }
    bool operator==(const Metadata &) const = default;
};

// From JPEG, PNG, WebP, JPEG XL, HEIF, HEIC, AVIF and TIFF. Input is untrusted: invalid data counts as
// absent. Reads a few megabytes at most; the position of `device` is undefined afterwards.
Metadata readMetadata(QIODevice &device);

// Adapts the metadata to an upright image of another size: sets the orientation to normal and the stated size
// to `size`, and clears the thumbnail, which shows the old image. Without `keepPlace` GPS data is cleared
// too. Data that cannot be parsed is dropped, since its content is unknown.
Metadata adaptedMetadata(const Metadata &metadata, const QSize &size, bool keepPlace);

struct WithMetadata {
    QByteArray file;
    Metadata leftOut; // what the format has no room for
};
// `file` in the format of `target` (one with hasMetadata), with the metadata added; unchanged if it is not
// understood.
WithMetadata withMetadata(const QByteArray &file, Target target, const Metadata &metadata);

} // namespace conversion
