// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/Fingerprint.h"
#include "imaging/engine/Examination.h"

#include <QByteArray>
#include <QImage>

namespace lookalikes
{

// What is kept of a decoded image.
struct ExaminedImage {
    int width = 0; // pixels, upright
    int height = 0;
    QByteArray format; // imaging::LoadedImage::format
    Fingerprint fingerprint;
    QImage thumbnail;
};

// Computes the fingerprint of an examined image from its samples.
ExaminedImage examinedImage(imaging::Examination examination);

// `samples`: imaging::Examination::samples.
Fingerprint fingerprintOf(const QImage &samples);

} // namespace lookalikes
