// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/engine/ImageLoader.h"

#include <QByteArray>
#include <QImage>

#include <functional>
#include <optional>

// What is kept of a decoded image when only its look matters: a thumbnail, and a small square of samples by
// which images can be compared. Any thread.
namespace imaging
{

inline constexpr int thumbnailSide = 128; // the shorter side of a thumbnail, in pixels
inline constexpr int sampleSide = 40;     // both sides of the samples, in pixels

struct Examination {
    int width = 0; // pixels, upright
    int height = 0;
    QByteArray format; // LoadedImage::format
    QImage samples;    // Format_RGB32, sampleSide by sampleSide, taken from the thumbnail
    QImage thumbnail;
};

// Empty for an image with a side below sampleSide, and for one so long and thin that its thumbnail would take
// more memory than an image may (imageAllocationLimit). Reads the pixels as they are stored: colours hidden
// behind full transparency count, and so does the black that decoders leave there.
std::optional<Examination> examine(LoadedImage loaded);

// readImage(), or a fake. Called on several threads at once. What it throws counts as a failure.
using Decode = std::function<std::optional<LoadedImage>(const QString &path, const BeforeDecode &)>;

} // namespace imaging
