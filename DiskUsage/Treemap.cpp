// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/Treemap.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace diskusage
{

namespace
{

// The worst aspect ratio in a row of these areas along a side: 1 for squares, more for strips.
double worstProportion(const std::vector<double> &areas, std::size_t begin, std::size_t end, double sum,
                       double side)
{
    double worst = 0;
    for (std::size_t i = begin; i < end; ++i) {
        const double thickness = sum / side;
        const double length = areas[i] / thickness;
        worst = std::max({worst, thickness / length, length / thickness});
    }
    return worst;
}

// Places one row along the shorter side of `free` and removes its strip.
void layRow(const std::vector<double> &areas, std::size_t begin, std::size_t end, double sum, QRectF &free,
            std::vector<QRectF> &out)
{
    const bool upright = free.width() >= free.height(); // the row is a column on the left
    const double thickness = sum / (upright ? free.height() : free.width());
    double position = upright ? free.top() : free.left();
    for (std::size_t i = begin; i < end; ++i) {
        const double length = areas[i] / thickness;
        out[i] = upright ? QRectF(free.left(), position, thickness, length)
                         : QRectF(position, free.top(), length, thickness);
        position += length;
    }
    if (upright)
        free.setLeft(free.left() + thickness);
    else
        free.setTop(free.top() + thickness);
}

} // namespace

std::vector<QRectF> squarified(const std::vector<double> &weights, const QRectF &area)
{
    std::vector<QRectF> rects(weights.size());
    const double total = std::accumulate(weights.begin(), weights.end(), 0.0);
    if (total <= 0 || area.width() <= 0 || area.height() <= 0)
        return rects;
    std::vector<double> areas;
    for (const double weight : weights)
        areas.push_back(weight / total * area.width() * area.height());

    QRectF free = area;
    std::size_t begin = 0;
    while (begin < areas.size() && areas[begin] > 0) {
        const double side = std::min(free.width(), free.height());
        if (side <= 0)
            break; // no area is left because of rounding
        std::size_t end = begin;
        double sum = 0;
        double worst = std::numeric_limits<double>::max();
        while (end < areas.size() && areas[end] > 0) {
            const double grown = worstProportion(areas, begin, end + 1, sum + areas[end], side);
            if (grown > worst)
                break;
            worst = grown;
            sum += areas[end++];
        }
        layRow(areas, begin, end, sum, free, rects);
        begin = end;
    }
    return rects;
}

} // namespace diskusage
