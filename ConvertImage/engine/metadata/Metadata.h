// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

#include <QIODevice>
#include <QSize>

namespace conversion
{

// What a camera or an editor noted beside the picture. The colour profile is not part of it: that goes with
// the image.
struct Metadata {
    QByteArray exif; // as a TIFF file of its own, without a format's marker before it
    QByteArray xmp;  // XML
    // There is more of it in the source than is ever read; what is above is without it.
    bool isExifCut = false;
    bool isXmpCut = false;

    bool isEmpty() const { return exif.isEmpty() && xmp.isEmpty(); }
    bool operator==(const Metadata &) const = default;
};

// From JPEG, PNG, WebP, JPEG XL, HEIF, HEIC, AVIF and TIFF. The bytes come from outside: what makes no sense
// counts as absent. Reads a few megabytes at most, and leaves `device` anywhere.
Metadata readMetadata(QIODevice &device);

// For a picture that is upright already and has another size: the orientation becomes normal, the stated size
// `size`, and the thumbnail, which shows another picture, is cleared. Without `keepPlace` the position is
// cleared as well. What cannot be followed is left out, as nobody could say what is in it.
Metadata adaptedMetadata(const Metadata &metadata, const QSize &size, bool keepPlace);

struct WithMetadata {
    QByteArray file;
    Metadata leftOut; // what the file has no room for
};
// `file` in the format of `target` (one of those with hasMetadata), with the metadata in it; a file that is
// not understood as it is.
WithMetadata withMetadata(const QByteArray &file, Target target, const Metadata &metadata);

} // namespace conversion
