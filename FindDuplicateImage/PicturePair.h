// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/Difference.h"
#include "core/CancelFlag.h"

#include <QImage>
#include <QString>

namespace imaging
{
class DecoderPool;
}

// An image loaded for display.
struct LoadedPicture {
    QString path;
    QImage full;          // null if it cannot be read
    QImage fitted;        // scaled down smoothly to screen size; same as `full` if that is smaller
    bool inCloud = false; // not read, since that would download it
};

// Two images to compare; the second is optional.
struct PicturePair {
    LoadedPicture first;
    LoadedPicture second;
    lookalikes::Difference difference;
};

// The longer side of images scaled down to screen size.
inline constexpr int fittedSide = 1600;

// Loads and compares; takes as long as decoding two images. Images in `known` are not loaded again.
PicturePair loadPictures(const QString &first, const QString &second, const PicturePair &known,
                         imaging::DecoderPool &decoders, const core::CancelFlag &cancel);
