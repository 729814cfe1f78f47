// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/Preview.h"

#include "widgets/Theme.h"

#include <QPainter>

QRCodePreview::QRCodePreview(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void QRCodePreview::showCode(const qr::Drawing &drawing, const QString &name)
{
    m_drawing = drawing;
    m_text.clear();
    m_picture = {};
    setAccessibleName(name);
    update();
}

void QRCodePreview::showText(const QString &text)
{
    m_drawing.reset();
    m_text = text;
    setAccessibleName(text);
    update();
}

// What a code without a background lies on.
void QRCodePreview::paintChecks(QPainter &painter, const QRect &square) const
{
    painter.fillRect(square, Qt::white);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush(QColor(0xE4, 0xE4, 0xE4), Qt::Dense4Pattern));
    painter.drawRect(square);
}

void QRCodePreview::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const theme::Colors colors = theme::colors(this);
    theme::paintCard(painter, QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), colors);
    const QRect inside = rect().adjusted(theme::space, theme::space, -theme::space, -theme::space);
    if (!m_drawing) {
        painter.setPen(colors.textMuted);
        painter.drawText(inside, Qt::AlignCenter | Qt::TextWordWrap, m_text);
        return;
    }
    const int side = qMin(inside.width(), inside.height());
    QRect square(0, 0, side, side);
    square.moveCenter(inside.center());
    if (m_drawing->style().transparent)
        paintChecks(painter, square);
    // In the screen's own pixels, so that the modules are sharp on scaled screens too.
    const int pixels = qRound(side * devicePixelRatioF());
    if (m_picture.width() != pixels)
        m_picture = m_drawing->image(pixels);
    if (m_picture.isNull())
        m_drawing->paint(painter, square);
    else
        painter.drawImage(square, m_picture);
}
