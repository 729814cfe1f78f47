// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"
#include "ConvertImage/engine/Watermarking.h"

namespace conversion
{

// The largest output that is made, in bytes: about 130 million pixels of 32 bits.
inline constexpr qint64 maxRenderedBytes = qint64(512) << 20;

enum class RenderProblem {
    None,
    NoPicture, // there was nothing to render
    NoSize,    // resized to less than a pixel
    TooLarge,  // more than maxRenderedBytes
    NoMemory
};

// In words for the user; empty for None.
QString problemText(RenderProblem problem);

struct Rendered {
    QImage image; // null with a problem
    RenderProblem problem = RenderProblem::None;
};

// The one way from a loaded picture to that which is written: resize, adjust, grey, marks. For a preview the
// size is changed the quick way; everything else is the same. Any thread.
Rendered render(const QImage &loaded, const Rendering &rendering, const MarkSources &sources, bool preview);

} // namespace conversion
