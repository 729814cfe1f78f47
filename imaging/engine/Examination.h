// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/engine/ImageLoader.h"

#include <QByteArray>
#include <QImage>

#include <functional>
#include <optional>

// What is kept of a decoded image for display and comparison: a thumbnail, and a small square of samples. Any
// thread.
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

// nullopt for an image with a side below sampleSide, and for one so long and narrow that its thumbnail would
// exceed the limit for an image (imageAllocationLimit). Uses the pixels as stored: colours behind full
// transparency count, as does the black that decoders put there.
std::optional<Examination> examine(LoadedImage loaded);

// readImage() or a fake. Called on several threads at once. Exceptions count as a failure.
using Decode = std::function<std::optional<LoadedImage>(const QString &path, const BeforeDecode &)>;

} // namespace imaging
