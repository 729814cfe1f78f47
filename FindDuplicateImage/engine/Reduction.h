// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/Fingerprint.h"

#include <QByteArray>
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

// What is kept of a decoded picture.
struct ExaminedImage {
    int width = 0; // pixels, upright
    int height = 0;
    QByteArray format; // core::LoadedImage::format
    ReducedImage reduced;
};

// Empty for a picture with a side below 40 pixels, which is never compared, and for one so long and thin that
// its thumbnail would take more memory than a picture may (core::imageAllocationLimit). Reads the picture's
// pixels as they are stored: colours hidden behind full transparency count, and so does the black that
// decoders leave there.
std::optional<ReducedImage> reduceImage(QImage image);

// The steps of reduceImage(), for a decoder that lives in another process. thumbnailOf() gives a null image
// where reduceImage() gives nothing.
QImage thumbnailOf(QImage image);
// Format_RGB32, fingerprintSide by fingerprintSide.
QImage fingerprintPixels(const QImage &thumbnail);
Fingerprint fingerprintOf(const QImage &fingerprintPixels);

} // namespace lookalikes
