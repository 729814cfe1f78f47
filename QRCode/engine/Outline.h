// SPDX-License-Identifier: GPL-3.0-or-later
// The modules of a code as closed curves, one unit a module, from (0, 0) to (size, size). Modules that touch
// become one curve: drawn one by one they would show hairlines between them. To be filled by the non-zero
// winding rule.
#pragma once

#include "QRCode/engine/Style.h"

#include <QPainterPath>

#include <vector>

namespace qr
{

// In pieces that do not overlap: the rasterizer's time grows with the square of what it is given at once.
// Modules that reach into `cleared`, which may be empty, are left out.
std::vector<QPainterPath> outline(const core::QrMatrix &matrix, const Style &style,
                                  const QPainterPath &cleared);

} // namespace qr
