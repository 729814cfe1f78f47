// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FLCardButton.h"

#include "widgets/Theme.h"

#include <QFocusEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace
{

constexpr int minWidth = 150;
constexpr double nearlyFull = 0.9; // Windows shows a drive's bar in red from here on

QFont titleFont(const QFont &base)
{
    QFont font(base);
    font.setWeight(QFont::DemiBold);
    return font;
}

} // namespace

FLCardButton::FLCardButton(QWidget *parent) : QAbstractButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setIconSize({24, 24});
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void FLCardButton::setCaption(const QString &caption)
{
    m_caption = caption;
    setAccessibleDescription(caption);
    updateGeometry();
    update();
}

void FLCardButton::setCaptionElide(Qt::TextElideMode mode)
{
    m_captionElide = mode;
    update();
}

void FLCardButton::setShare(std::optional<double> share)
{
    m_share = share;
    updateGeometry();
    update();
}

int FLCardButton::textHeight() const
{
    int height = QFontMetrics(titleFont(font())).height();
    if (!m_caption.isEmpty())
        height += theme::spaceTight / 2 + QFontMetrics(theme::caption(font())).height();
    if (m_share)
        height += theme::spaceSnug + theme::barHeight;
    return height;
}

QSize FLCardButton::sizeHint() const
{
    const int text = qMax(QFontMetrics(titleFont(font())).horizontalAdvance(this->text()),
                          QFontMetrics(theme::caption(font())).horizontalAdvance(m_caption));
    const int width = 3 * theme::space + iconSize().width() + text;
    return {qMax(minWidth, width), 2 * theme::space + qMax(iconSize().height(), textHeight())};
}

QSize FLCardButton::minimumSizeHint() const
{
    return {minWidth, sizeHint().height()};
}

bool FLCardButton::event(QEvent *event)
{
    // The tool tip shows captions that are elided on the card.
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        const int room = width() - 3 * theme::space - iconSize().width();
        const bool cut = QFontMetrics(titleFont(font())).horizontalAdvance(text()) > room ||
                         QFontMetrics(theme::caption(font())).horizontalAdvance(m_caption) > room;
        const QString whole = m_caption.isEmpty() ? text() : text() + QLatin1Char('\n') + m_caption;
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), cut ? whole : QString(), this);
        return true;
    }
    return QAbstractButton::event(event);
}

void FLCardButton::focusInEvent(QFocusEvent *event)
{
    switch (event->reason()) {
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
        m_focusVisible = true;
        break;
    case Qt::MouseFocusReason:
        m_focusVisible = false;
        break;
    default: // the window or a menu only restores the previous focus
        break;
    }
    QAbstractButton::focusInEvent(event);
}

void FLCardButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const theme::Colors colors = theme::colors(this);
    const theme::CardState state = !isEnabled()                   ? theme::CardState::Rest
                                   : isDown()                     ? theme::CardState::Pressed
                                   : isCheckable() && isChecked() ? theme::CardState::Checked
                                   : underMouse()                 ? theme::CardState::Hover
                                                                  : theme::CardState::Rest;
    theme::paintCard(painter, rect(), colors, state, hasFocus() && m_focusVisible);

    QRect inner = rect().adjusted(theme::space, theme::space, -theme::space, -theme::space);
    const QRect iconArea =
        QStyle::alignedRect(layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter, iconSize(), inner);
    icon().paint(&painter, iconArea, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    const int used = iconSize().width() + theme::space;
    if (layoutDirection() == Qt::RightToLeft)
        inner.setRight(inner.right() - used);
    else
        inner.setLeft(inner.left() + used);
    inner.setTop(inner.top() + (inner.height() - textHeight()) / 2);
    paintTexts(painter, inner);
}

void FLCardButton::paintTexts(QPainter &painter, const QRect &area) const
{
    const theme::Colors colors = theme::colors(this);
    const int flags = Qt::AlignLeading | Qt::AlignTop | Qt::TextSingleLine;
    const QFontMetrics title(titleFont(font()));
    painter.setFont(titleFont(font()));
    painter.setPen(isEnabled() ? colors.text : colors.textMuted);
    painter.drawText(area, flags, title.elidedText(text(), Qt::ElideRight, area.width()));

    QRect rest = area.adjusted(0, title.height() + theme::spaceTight / 2, 0, 0);
    if (!m_caption.isEmpty()) {
        const QFontMetrics caption(theme::caption(font()));
        painter.setFont(theme::caption(font()));
        painter.setPen(colors.textMuted);
        painter.drawText(rest, flags, caption.elidedText(m_caption, m_captionElide, rest.width()));
        rest.setTop(rest.top() + caption.height() + theme::spaceTight / 2);
    }
    if (m_share) {
        const QRectF bar(rest.left(), rest.top() + theme::spaceTight, rest.width(), theme::barHeight);
        theme::paintBar(painter, bar, *m_share, *m_share >= nearlyFull ? colors.danger : colors.accent,
                        colors.track, layoutDirection());
    }
}
