// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/Preview.h"

#include "widgets/Theme.h"

#include <QPainter>

QRCodePreview::QRCodePreview(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void QRCodePreview::showCode(const QImage &picture, bool transparent, const QString &name,
                             const QString &facts)
{
    m_picture = picture;
    m_transparent = transparent;
    m_facts = facts;
    m_text.clear();
    setAccessibleName(name);
    setAccessibleDescription(facts);
    update();
}

void QRCodePreview::showText(const QString &text)
{
    m_picture = {};
    m_facts.clear();
    m_text = text;
    setAccessibleName(text);
    setAccessibleDescription({});
    update();
}

QRect QRCodePreview::square() const
{
    const QRect room = rect().adjusted(0, 0, 0, -factsHeight());
    const int side = qMin(room.width(), room.height()) - 2 * theme::space;
    QRect square(0, 0, side, side);
    square.moveCenter(room.center());
    return square;
}

int QRCodePreview::factsHeight() const
{
    return QFontMetrics(theme::caption(font())).height();
}

int QRCodePreview::wantedPixels() const
{
    return qRound(square().width() * devicePixelRatioF());
}

void QRCodePreview::resizeEvent(QResizeEvent *)
{
    emit sizeChanged();
}

// Drawn behind a code without a background.
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
    if (m_picture.isNull()) {
        const int inset = theme::space;
        painter.setPen(colors.textMuted);
        painter.drawText(rect().adjusted(inset, inset, -inset, -inset), Qt::AlignCenter | Qt::TextWordWrap,
                         m_text);
        return;
    }
    if (m_transparent)
        paintChecks(painter, square());
    painter.drawImage(square(), m_picture);
    painter.setPen(colors.textMuted);
    painter.setFont(theme::caption(font()));
    painter.drawText(QRect(0, square().bottom() + theme::spaceTight, width(), factsHeight()),
                     Qt::AlignHCenter, m_facts);
}
