// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a code can be read back, and if not, why not. Any thread; a picture of 4000 pixels takes about a
// second.
#pragma once

#include "QRCode/engine/Drawing.h"

#include <QList>
#include <QString>

namespace qr
{

enum class Reason {
    LightOnDark, // the code is lighter than its background
    Contrast,    // of one of its colours with the background
    Logo,        // covers too much
    Margin,      // narrower than readers ask for
    Shapes,      // of body or eyes
    TooSmall,    // modules of too few pixels
    SeeThrough,  // no background of its own
    Unknown,
};
// A sentence for the user.
QString reasonText(Reason reason);

struct Verdict {
    bool scans = false;
    // When it does not scan: the likely reasons, the likeliest first. When it does: what other readers may
    // stumble over.
    QList<Reason> reasons;

    bool operator==(const Verdict &) const = default;
};

// `picture` is the drawing's image as it was saved, or as it will be.
Verdict check(const Drawing &drawing, const QImage &picture, const QString &text);

// From 1 (none) to 21 (black on white), as the Web Content Accessibility Guidelines define it.
double contrast(const QColor &one, const QColor &other);

} // namespace qr
