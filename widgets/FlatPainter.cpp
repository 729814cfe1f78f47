// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FlatPainter.h"

#include <QAbstractSpinBox>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QTabBar>
#include <QWidget>

#include <algorithm>

namespace
{

constexpr int arrowSize = 8;
constexpr int grooveHeight = 4;
constexpr int underline = 3; // of the current tab

bool hovered(const QStyleOption *option)
{
    return FlatPainter::enabled(option) && (option->state & QStyle::State_MouseOver);
}

bool pressed(const QStyleOption *option)
{
    return FlatPainter::enabled(option) && (option->state & QStyle::State_Sunken);
}

} // namespace

bool FlatPainter::enabled(const QStyleOption *option)
{
    return option->state & QStyle::State_Enabled;
}

bool FlatPainter::focused(const QStyleOption *option)
{
    return enabled(option) && (option->state & QStyle::State_HasFocus);
}

FlatPainter::FlatPainter(QPainter *painter, const QWidget *widget)
    : m_painter(painter),
      m_widget(widget),
      m_colors(theme::colors(widget))
{
}

QColor FlatPainter::fillOf(const QStyleOption *option) const
{
    if (!enabled(option))
        return m_colors.window;
    return pressed(option) ? m_colors.cardPressed : hovered(option) ? m_colors.cardHover : m_colors.card;
}

QColor FlatPainter::lineOf(const QStyleOption *option) const
{
    return hovered(option) ? m_colors.borderHover : m_colors.controlBorder;
}

void FlatPainter::box(const QRectF &rect, const QColor &fill, const QColor &line, qreal width) const
{
    m_painter->save();
    m_painter->setRenderHint(QPainter::Antialiasing);
    m_painter->setPen(line.isValid() ? QPen(line, width) : QPen(Qt::NoPen));
    m_painter->setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    const qreal inset = line.isValid() ? width / 2 : 0;
    m_painter->drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), theme::controlRadius,
                               theme::controlRadius);
    m_painter->restore();
}

void FlatPainter::chevron(const QRectF &rect, const QColor &color, bool up) const
{
    const QPointF middle = rect.center();
    const qreal half = arrowSize / 2.0;
    const qreal rise = up ? half / 2 : -half / 2;
    m_painter->save();
    m_painter->setRenderHint(QPainter::Antialiasing);
    m_painter->setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    m_painter->drawPolyline(
        QPolygonF({middle + QPointF(-half, rise), middle + QPointF(0, -rise), middle + QPointF(half, rise)}));
    m_painter->restore();
}

void FlatPainter::pushButton(const QStyleOptionButton *option) const
{
    if (option->features & QStyleOptionButton::Flat && !hovered(option) && !pressed(option))
        return;
    const bool on = option->state & QStyle::State_On;
    if (theme::isPrimary(m_widget) && enabled(option)) {
        const double shade = pressed(option) ? 0.16 : hovered(option) ? 0.08 : 0;
        box(option->rect, theme::mix(m_colors.accent, m_colors.accentText, shade), {});
    } else {
        box(option->rect, on ? m_colors.accentSoft : fillOf(option), on ? m_colors.accent : lineOf(option));
    }
    if (focused(option))
        theme::paintFocusRing(*m_painter, QRectF(option->rect).adjusted(-0.5, -0.5, 0.5, 0.5), m_colors,
                              theme::controlRadius);
    // On a filled button the outer ring has the colour of the fill, so a second one is drawn inside.
    if (focused(option) && theme::isPrimary(m_widget))
        box(QRectF(option->rect).adjusted(2, 2, -2, -2), {}, m_colors.accentText);
}

void FlatPainter::toolButton(const QStyleOption *option) const
{
    const bool on = option->state & QStyle::State_On;
    const bool raised = !(option->state & QStyle::State_AutoRaise);
    if (on || pressed(option) || hovered(option) || raised)
        box(option->rect, on ? m_colors.accentSoft : fillOf(option),
            on       ? m_colors.accent
            : raised ? lineOf(option)
                     : QColor());
}

void FlatPainter::field(const QStyleOption *option, const QColor &fill) const
{
    const bool focus = focused(option);
    box(option->rect, enabled(option) ? fill : m_colors.window, focus ? m_colors.accent : lineOf(option),
        focus ? 2 : 1);
}

void FlatPainter::checkMark(const QRectF &rect, const QColor &color) const
{
    m_painter->setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    m_painter->setBrush(Qt::NoBrush);
    const auto at = [&rect](double x, double y) {
        return QPointF(rect.left() + x * rect.width(), rect.top() + y * rect.height());
    };
    m_painter->drawPolyline(QPolygonF({at(0.25, 0.52), at(0.43, 0.70), at(0.75, 0.32)}));
}

void FlatPainter::indicator(const QStyleOption *option, bool round) const
{
    const qreal side = std::min(option->rect.width(), option->rect.height());
    QRectF rect(0, 0, side, side);
    rect.moveCenter(QRectF(option->rect).center());
    const bool on = option->state & QStyle::State_On;
    const bool partly = option->state & QStyle::State_NoChange;
    const QColor on_fill = enabled(option) ? m_colors.accent : m_colors.borderHover;
    m_painter->save();
    m_painter->setRenderHint(QPainter::Antialiasing);
    const bool filled = on || partly;
    m_painter->setPen(QPen(filled            ? on_fill
                           : hovered(option) ? m_colors.textMuted
                                             : m_colors.indicatorBorder,
                           1));
    m_painter->setBrush(filled ? on_fill : fillOf(option));
    const QRectF shape = rect.adjusted(0.5, 0.5, -0.5, -0.5);
    const qreal radius = round ? side / 2 : 3;
    m_painter->drawRoundedRect(shape, radius, radius);
    const QColor mark = enabled(option) ? m_colors.accentText : m_colors.window;
    if (round && on) {
        m_painter->setPen(Qt::NoPen);
        m_painter->setBrush(mark);
        m_painter->drawEllipse(rect.center(), side / 5, side / 5);
    } else if (partly) {
        m_painter->setPen(QPen(mark, 2, Qt::SolidLine, Qt::RoundCap));
        m_painter->drawLine(rect.center() - QPointF(side / 4, 0), rect.center() + QPointF(side / 4, 0));
    } else if (on) {
        checkMark(rect, mark);
    }
    m_painter->restore();
}

void FlatPainter::slider(const QStyleOptionSlider *option) const
{
    const QRectF groove =
        m_widget->style()->subControlRect(QStyle::CC_Slider, option, QStyle::SC_SliderGroove, m_widget);
    const QRectF handle =
        m_widget->style()->subControlRect(QStyle::CC_Slider, option, QStyle::SC_SliderHandle, m_widget);
    const bool flat = option->orientation == Qt::Horizontal;
    QRectF line =
        flat ? QRectF(groove.left(), groove.center().y() - grooveHeight / 2.0, groove.width(), grooveHeight)
             : QRectF(groove.center().x() - grooveHeight / 2.0, groove.top(), grooveHeight, groove.height());
    const QColor accent = enabled(option) ? m_colors.accent : m_colors.borderHover;
    m_painter->save();
    m_painter->setRenderHint(QPainter::Antialiasing);
    m_painter->setPen(Qt::NoPen);
    m_painter->setBrush(m_colors.track);
    m_painter->drawRoundedRect(line, grooveHeight / 2.0, grooveHeight / 2.0);
    const bool fromEnd = option->upsideDown;
    if (flat)
        fromEnd ? line.setLeft(handle.center().x()) : line.setRight(handle.center().x());
    else
        fromEnd ? line.setTop(handle.center().y()) : line.setBottom(handle.center().y());
    m_painter->setBrush(accent);
    m_painter->drawRoundedRect(line, grooveHeight / 2.0, grooveHeight / 2.0);
    const qreal radius = std::min(handle.width(), handle.height()) / 2 - 1;
    m_painter->setPen(QPen(m_colors.borderHover, 1));
    m_painter->setBrush(m_colors.card);
    m_painter->drawEllipse(handle.center(), radius, radius);
    m_painter->setPen(Qt::NoPen);
    m_painter->setBrush(accent);
    const qreal dot = radius * (pressed(option) ? 0.45 : hovered(option) ? 0.7 : 0.58);
    m_painter->drawEllipse(handle.center(), dot, dot);
    m_painter->restore();
    if (focused(option))
        theme::paintFocusRing(*m_painter, handle, m_colors, static_cast<int>(handle.height() / 2));
}

void FlatPainter::comboBox(const QStyleOptionComboBox *option) const
{
    field(option, option->editable ? m_colors.field : fillOf(option));
    const QRect arrow =
        m_widget->style()->subControlRect(QStyle::CC_ComboBox, option, QStyle::SC_ComboBoxArrow, m_widget);
    chevron(arrow, enabled(option) ? m_colors.textMuted : m_colors.borderHover, false);
}

void FlatPainter::spinBox(const QStyleOptionSpinBox *option) const
{
    if (option->frame)
        field(option, m_colors.field);
    if (option->buttonSymbols == QAbstractSpinBox::NoButtons)
        return;
    const struct {
        QStyle::SubControl part;
        QAbstractSpinBox::StepEnabledFlag step;
        bool up;
    } arrows[] = {{QStyle::SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled, true},
                  {QStyle::SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled, false}};
    for (const auto &[part, step, up] : arrows) {
        const QRect rect = m_widget->style()->subControlRect(QStyle::CC_SpinBox, option, part, m_widget);
        const bool can = enabled(option) && (option->stepEnabled & step);
        if (can && (option->activeSubControls & part) && hovered(option))
            box(QRectF(rect).adjusted(1, up ? 2 : 0, -2, up ? 0 : -2),
                pressed(option) ? m_colors.cardPressed : m_colors.track, {});
        chevron(rect, can ? m_colors.textMuted : m_colors.borderHover, up);
    }
}

void FlatPainter::tab(const QStyleOptionTab *option) const
{
    const bool selected = option->state & QStyle::State_Selected;
    const QRectF rect = QRectF(option->rect).adjusted(1, 1, -1, -1);
    if (!selected && hovered(option))
        box(rect, m_colors.cardHover, {});
    if (focused(option))
        theme::paintFocusRing(*m_painter, rect, m_colors, theme::controlRadius);
    if (!selected)
        return;
    QRectF line(rect.left() + theme::spaceTight, rect.bottom() - underline, rect.width() - theme::spaceSnug,
                underline);
    if (option->shape == QTabBar::RoundedSouth || option->shape == QTabBar::TriangularSouth)
        line.moveTop(rect.top());
    theme::paintBar(*m_painter, line, 1, m_colors.accent, m_colors.accent);
}

void FlatPainter::headerSection(const QStyleOptionHeader *option) const
{
    const QRect rect = option->rect;
    m_painter->fillRect(rect, hovered(option) ? m_colors.cardHover : m_colors.card);
    m_painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), m_colors.border);
    if (option->orientation == Qt::Horizontal)
        m_painter->fillRect(QRect(option->direction == Qt::RightToLeft ? rect.left() : rect.right(),
                                  rect.top() + theme::spaceTight, 1, rect.height() - theme::spaceSnug),
                            m_colors.border);
}

void FlatPainter::progressBar(const QStyleOptionProgressBar *option) const
{
    const QRectF rect = option->rect;
    const qint64 range = qint64(option->maximum) - option->minimum;
    const double share = range > 0 ? double(qint64(option->progress) - option->minimum) / double(range) : 0;
    theme::paintBar(*m_painter, rect, share, m_colors.accent, m_colors.track, option->direction);
}
