// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

namespace conversion
{

// The capabilities of the formats, as implemented by the writers used here.
struct TargetFacts {
    const char *name;      // in the format list
    const char *extension; // with the dot; it selects the writer
    bool hasQuality;
    bool hasLossless; // in addition to lossy
    bool hasAlpha;
    bool hasProfile;  // can store a colour profile
    bool hasMetadata; // EXIF and XMP are copied
    bool isThreaded;  // its encoder uses all cores by itself
};

const TargetFacts &factsOf(Target target);

// The name that QImageWriter uses: "jpg", "jxl".
QByteArray writerFormat(Target target);

// From a stored number: negative ones give the first format, larger ones the last.
Target targetFromIndex(int index);
// From a stored number; others give "Bottom - Right".
Position positionFromIndex(int index);

const char *positionName(Position position);    // "Top - Left"
const char *paperSizeName(PaperSize paperSize); // "Letter"

} // namespace conversion
