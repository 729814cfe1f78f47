// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/Fingerprint.h"

#include <QImage>

#include <optional>

namespace lookalikes
{

// The shorter side of a thumbnail, in pixels. A fingerprint is taken from the thumbnail, not from the
// picture.
inline constexpr int thumbnailSide = 128;

struct ReducedImage {
    Fingerprint fingerprint;
    QImage thumbnail;
};

// Empty for a picture with a side below 40 pixels, which is never compared, and for one so long and thin that
// its thumbnail would take more memory than a picture may (core::imageAllocationLimit). Reads the picture's
// pixels as they are stored: colours hidden behind full transparency count, and so does the black that
// decoders leave there.
std::optional<ReducedImage> reduceImage(QImage image);

} // namespace lookalikes
