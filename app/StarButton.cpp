// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/StarButton.h"

#include "widgets/Controls.h"
#include "widgets/Theme.h"

#include <QKeyEvent>
#include <QPainter>

namespace
{

constexpr int side = 28;
constexpr int iconSide = 16;

} // namespace

StarButton::StarButton(QWidget *parent) : QAbstractButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setIconSize({iconSide, iconSide});
}

void StarButton::setStarred(bool starred, const QString &moduleTitle, bool lastStar)
{
    setIcon(controls::image(starred ? "star16" : "starBlack16"));
    const QString action = starred ? tr("Remove the star from %1") : tr("Star %1");
    setAccessibleName(action.arg(moduleTitle));
    QString tip = starred ? tr("Starred: stands at the top (S)") : tr("Star: put it at the top (S)");
    if (lastStar)
        tip += QLatin1Char('\n') + tr("The only star: when it is removed, it is back at the next start.");
    setToolTip(tip);
}

QSize StarButton::sizeHint() const
{
    return {side, side};
}

void StarButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else if (event->key() == Qt::Key_Space)
        QAbstractButton::keyPressEvent(event);
    else
        event->ignore(); // handled by the card, which moves the focus
}

void StarButton::focusInEvent(QFocusEvent *event)
{
    m_focusVisible = event->reason() != Qt::MouseFocusReason;
    QAbstractButton::focusInEvent(event);
}

void StarButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const theme::Colors colors = theme::colors(this);
    if (isDown() || underMouse()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme::mix(colors.card, colors.text, isDown() ? 0.2 : 0.1));
        painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
    }
    const QRect place((width() - iconSide) / 2, (height() - iconSide) / 2, iconSide, iconSide);
    icon().paint(&painter, place);
    if (hasFocus() && m_focusVisible)
        theme::paintFocusRing(painter, rect(), colors, side / 2);
}
