// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"
#include "ConvertImage/engine/Watermarking.h"

namespace conversion
{

// Limit for an output image in bytes: about 130 million pixels at 32 bits.
inline constexpr qint64 maxRenderedBytes = qint64(512) << 20;

enum class RenderProblem {
    None,
    NoImage,  // the input is null
    NoSize,   // resized to less than one pixel
    TooLarge, // more than maxRenderedBytes
    NoMemory
};

// A message for the user; empty for None.
QString problemText(RenderProblem problem);

struct Rendered {
    QImage image; // null if there is a problem
    RenderProblem problem = RenderProblem::None;
};

// The one pipeline from a loaded image to the output: resize, adjust, grey, marks. A preview is resized with
// the fast method; everything else is the same. Any thread.
Rendered render(const QImage &loaded, const Rendering &rendering, const MarkSources &sources, bool preview);

} // namespace conversion
