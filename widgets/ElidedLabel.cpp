// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ElidedLabel.h"

#include <QPainter>

namespace
{
constexpr int minimumCharacters = 8;
}

ElidedLabel::ElidedLabel(QWidget *parent, Qt::TextElideMode mode) : TextLabel(parent), m_mode(mode)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ElidedLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()), fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    const int few = fontMetrics().averageCharWidth() * minimumCharacters;
    return {qMin(few, sizeHint().width()), fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine, shown());
}

QString ElidedLabel::shown() const
{
    return fontMetrics().elidedText(text(), m_mode, width());
}

QString ElidedLabel::shortenedTip() const
{
    return shown() == text() ? QString() : text();
}
