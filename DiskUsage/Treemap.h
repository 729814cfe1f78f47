// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>

#include <vector>

namespace diskusage
{

// Divides `area` into one rectangle per weight, with proportional areas and aspect ratios close to 1: rows
// are filled along the shorter side as long as the worst ratio in the row improves (squarified treemaps,
// Bruls, Huizing and van Wijk, 2000). Weights must be non-negative and descending; a weight of 0 gets an
// empty rectangle.
std::vector<QRectF> squarified(const std::vector<double> &weights, const QRectF &area);

} // namespace diskusage
