// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ToolStrip.h"

#include "widgets/Theme.h"

#include <QPainter>

void ToolStrip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const theme::Colors colors = theme::colors(this);
    painter.fillRect(rect(), colors.window);
    const int x = layoutDirection() == Qt::RightToLeft ? 0 : width() - 1;
    painter.fillRect(x, 0, 1, height(), colors.border);
}
