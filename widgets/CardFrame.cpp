// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/CardFrame.h"

#include "widgets/Theme.h"

#include <QPainter>

void CardFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    theme::paintCard(painter, QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), theme::colors(this));
}
