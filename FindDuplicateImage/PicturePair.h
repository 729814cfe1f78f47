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

// A picture for looking at.
struct LoadedPicture {
    QString path;
    QImage full;   // null when it cannot be read any more, or is not
    QImage fitted; // the same, smoothly reduced to the size of a screen; `full` itself where that is smaller
    bool inCloud = false; // not read: that would fetch it from there
};

// Two pictures to compare; the second may be left out.
struct PicturePair {
    LoadedPicture first;
    LoadedPicture second;
    lookalikes::Difference difference;
};

// The longer side of what is reduced to the size of a screen.
inline constexpr int fittedSide = 1600;

// Reads and compares; takes as long as decoding two pictures takes. A picture of `known` is not read again.
PicturePair loadPictures(const QString &first, const QString &second, const PicturePair &known,
                         imaging::DecoderPool &decoders, const core::CancelFlag &cancel);
