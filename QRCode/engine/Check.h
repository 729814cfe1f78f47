// SPDX-License-Identifier: GPL-3.0-or-later
// Checks whether a code can be read back, and if not, why. Any thread; an image of 4000 pixels takes about a
// second.
#pragma once

#include "QRCode/engine/Drawing.h"

#include <QList>
#include <QString>

namespace qr
{

enum class Reason {
    LightOnDark, // the code is lighter than its background
    Contrast,    // too little between one of its colours and the background
    Logo,        // covers too much
    Margin,      // narrower than readers require
    Shapes,      // of the modules or eyes
    TooSmall,    // modules have too few pixels
    SeeThrough,  // transparent background
    Unknown,
};
// A sentence for the user.
QString reasonText(Reason reason);

struct Verdict {
    bool scans = false;
    // If it does not scan: the probable reasons, most probable first. If it does: what may confuse other
    // readers.
    QList<Reason> reasons;

    bool operator==(const Verdict &) const = default;
};

// `picture` is the image of the drawing as it was or will be saved.
Verdict check(const Drawing &drawing, const QImage &picture, const QString &text);

// Contrast ratio from 1 (none) to 21 (black on white), as defined by the Web Content Accessibility
// Guidelines.
double contrast(const QColor &one, const QColor &other);

} // namespace qr
