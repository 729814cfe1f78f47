// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

namespace conversion
{

// What the formats can hold, as their writers here do it.
struct TargetFacts {
    const char *name;      // in the list of formats
    const char *extension; // with its dot; it decides about the writer
    bool hasQuality;
    bool hasLossless; // beside a lossy way
    bool hasAlpha;
    bool hasProfile;  // a colour profile can be stored
    bool hasMetadata; // EXIF and XMP are carried over
    bool isThreaded;  // its encoder works on all cores by itself
};

const TargetFacts &factsOf(Target target);

// As QImageWriter names it: "jpg", "jxl".
QByteArray writerFormat(Target target);

// A stored number: a negative one counts as the first, one beyond the end as the last.
Target targetFromIndex(int index);
// A stored number; any other is "Bottom - Right".
Position positionFromIndex(int index);

const char *positionName(Position position);    // "Top - Left"
const char *paperSizeName(PaperSize paperSize); // "Letter"

} // namespace conversion
