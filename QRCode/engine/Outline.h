// SPDX-License-Identifier: GPL-3.0-or-later
// The modules of a code as closed curves, one unit per module, from (0, 0) to (size, size). Adjacent modules
// are merged into one curve, since drawing them one by one would show hairlines. Fill with the non-zero
// winding rule.
#pragma once

#include "QRCode/engine/Style.h"

#include <QPainterPath>

#include <vector>

namespace qr
{

// Returned in pieces that do not overlap, because the rasterizer's time grows with the square of the path
// size. Modules that intersect `cleared`, which may be empty, are left out.
std::vector<QPainterPath> outline(const core::QrMatrix &matrix, const Style &style,
                                  const QPainterPath &cleared);

} // namespace qr
