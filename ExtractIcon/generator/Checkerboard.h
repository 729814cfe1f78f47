// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QPainter;
class QRectF;

namespace icons
{

// What shows through where a picture is transparent.
void paintCheckerboard(QPainter &painter, const QRectF &rect, bool dark);

} // namespace icons
