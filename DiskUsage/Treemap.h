// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>

#include <vector>

namespace diskusage
{

// Divides `area` into one rectangle per weight, in proportion to the weights and as close to squares as it
// goes: rows are filled along the shorter side as long as the worst proportion of the row improves
// (squarified treemaps, Bruls, Huizing and van Wijk, 2000). Weights are not negative and in descending order;
// a weight of 0 gets an empty rectangle.
std::vector<QRectF> squarified(const std::vector<double> &weights, const QRectF &area);

} // namespace diskusage
