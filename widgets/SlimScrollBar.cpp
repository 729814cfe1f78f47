// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/SlimScrollBar.h"

#include "widgets/Theme.h"

#include <QPainter>
#include <QStyleOptionSlider>

namespace
{

constexpr int barWidth = 12;
constexpr double handleWidth = 6;
constexpr double handleWidthRest = 4; // while the mouse is not over it

} // namespace

SlimScrollBar::SlimScrollBar(QWidget *parent) : QScrollBar(Qt::Vertical, parent)
{
    setAttribute(Qt::WA_Hover);
}

QSize SlimScrollBar::sizeHint() const
{
    return {barWidth, QScrollBar::sizeHint().height()};
}

void SlimScrollBar::paintEvent(QPaintEvent *)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect slider =
        style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
    const bool active = underMouse() || isSliderDown();
    const double thickness = active ? handleWidth : handleWidthRest;
    QRectF handle(slider);
    handle.setLeft(handle.center().x() - thickness / 2);
    handle.setWidth(thickness);

    QPainter painter(this);
    const theme::Colors colors = theme::colors(this);
    painter.fillRect(rect(), colors.window);
    if (minimum() == maximum())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::mix(colors.window, colors.text, isSliderDown() ? 0.6 : active ? 0.5 : 0.35));
    painter.drawRoundedRect(handle, thickness / 2, thickness / 2);
}
