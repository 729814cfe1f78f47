// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ElidedLabel.h"

#include <QPainter>

namespace
{
constexpr int minimumCharacters = 8;
}

ElidedLabel::ElidedLabel(QWidget *parent, Qt::TextElideMode mode) : QWidget(parent), m_mode(mode)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    updateToolTip();
    updateGeometry();
    update();
}

QSize ElidedLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(m_text), fontMetrics().height()};
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

void ElidedLabel::resizeEvent(QResizeEvent *)
{
    updateToolTip();
}

QString ElidedLabel::shown() const
{
    return fontMetrics().elidedText(m_text, m_mode, width());
}

void ElidedLabel::updateToolTip()
{
    setToolTip(shown() == m_text ? QString() : m_text);
}
