// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FlatStyle.h"

#include "widgets/Theme.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QPainter>
#include <QPainterPath>
#include <QRadioButton>
#include <QStyleOption>
#include <QTabBar>
#include <QWidget>

#include <algorithm>

namespace flat
{

namespace
{

constexpr int buttonPadding = 10; // left and right padding of a button
constexpr int arrowSize = 8;
constexpr int grooveHeight = 4;
constexpr int underline = 3;   // of the current tab
constexpr int textPadding = 4; // left and right padding of a line edit, in addition to the base style's

bool enabled(const QStyleOption *option)
{
    return option->state & QStyle::State_Enabled;
}

bool hovered(const QStyleOption *option)
{
    return enabled(option) && (option->state & QStyle::State_MouseOver);
}

bool pressed(const QStyleOption *option)
{
    return enabled(option) && (option->state & QStyle::State_Sunken);
}

// Whether the focus should be shown even after a click, or on the first widget of a page.
bool isReachedByKey(const QStyleOption *option)
{
    return option->state & QStyle::State_KeyboardFocusChange;
}

bool focused(const QStyleOption *option)
{
    return enabled(option) && (option->state & QStyle::State_HasFocus);
}

theme::Colors colorsOf(const QWidget *widget)
{
    return theme::colors(widget);
}

void box(QPainter *painter, const QRectF &rect, const QColor &fill, const QColor &line, qreal width = 1)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(line.isValid() ? QPen(line, width) : QPen(Qt::NoPen));
    painter->setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    const qreal inset = line.isValid() ? width / 2 : 0;
    painter->drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), theme::controlRadius,
                             theme::controlRadius);
    painter->restore();
}

QColor fillOf(const QStyleOption *option, const theme::Colors &c)
{
    if (!enabled(option))
        return c.window;
    return pressed(option) ? c.cardPressed : hovered(option) ? c.cardHover : c.card;
}

QColor lineOf(const QStyleOption *option, const theme::Colors &c)
{
    return hovered(option) ? c.borderHover : c.controlBorder;
}

void chevron(QPainter *painter, const QRectF &rect, const QColor &color, bool up)
{
    const QPointF middle = rect.center();
    const qreal half = arrowSize / 2.0;
    const qreal rise = up ? half / 2 : -half / 2;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPolyline(
        QPolygonF({middle + QPointF(-half, rise), middle + QPointF(0, -rise), middle + QPointF(half, rise)}));
    painter->restore();
}

void pushButton(const QStyleOptionButton *option, QPainter *painter, const QWidget *widget)
{
    const theme::Colors c = colorsOf(widget);
    if (option->features & QStyleOptionButton::Flat && !hovered(option) && !pressed(option))
        return;
    const bool on = option->state & QStyle::State_On;
    if (theme::isPrimary(widget) && enabled(option)) {
        const double shade = pressed(option) ? 0.16 : hovered(option) ? 0.08 : 0;
        box(painter, option->rect, theme::mix(c.accent, c.accentText, shade), {});
    } else {
        box(painter, option->rect, on ? c.accentSoft : fillOf(option, c), on ? c.accent : lineOf(option, c));
    }
    if (focused(option))
        theme::paintFocusRing(*painter, QRectF(option->rect).adjusted(-0.5, -0.5, 0.5, 0.5), c,
                              theme::controlRadius);
    // On a filled button the outer ring has the colour of the fill, so a second one is drawn inside.
    if (focused(option) && theme::isPrimary(widget))
        box(painter, QRectF(option->rect).adjusted(2, 2, -2, -2), {}, c.accentText);
}

void toolButton(const QStyleOption *option, QPainter *painter, const QWidget *widget)
{
    const theme::Colors c = colorsOf(widget);
    const bool on = option->state & QStyle::State_On;
    const bool raised = !(option->state & QStyle::State_AutoRaise);
    if (on || pressed(option) || hovered(option) || raised)
        box(painter, option->rect, on ? c.accentSoft : fillOf(option, c),
            on       ? c.accent
            : raised ? lineOf(option, c)
                     : QColor());
}

// Line edits, spin boxes and combo boxes.
void field(const QStyleOption *option, QPainter *painter, const QWidget *widget, const QColor &fill)
{
    const theme::Colors c = colorsOf(widget);
    const bool focus = focused(option);
    box(painter, option->rect, enabled(option) ? fill : c.window, focus ? c.accent : lineOf(option, c),
        focus ? 2 : 1);
}

void checkMark(QPainter *painter, const QRectF &rect, const QColor &color)
{
    painter->setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    const auto at = [&rect](double x, double y) {
        return QPointF(rect.left() + x * rect.width(), rect.top() + y * rect.height());
    };
    painter->drawPolyline(QPolygonF({at(0.25, 0.52), at(0.43, 0.70), at(0.75, 0.32)}));
}

void indicator(const QStyleOption *option, QPainter *painter, const QWidget *widget, bool round)
{
    const theme::Colors c = colorsOf(widget);
    const qreal side = std::min(option->rect.width(), option->rect.height());
    QRectF rect(0, 0, side, side);
    rect.moveCenter(QRectF(option->rect).center());
    const bool on = option->state & QStyle::State_On;
    const bool partly = option->state & QStyle::State_NoChange;
    const QColor on_fill = enabled(option) ? c.accent : c.borderHover;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool filled = on || partly;
    painter->setPen(QPen(filled ? on_fill : hovered(option) ? c.textMuted : c.indicatorBorder, 1));
    painter->setBrush(filled ? on_fill : fillOf(option, c));
    const QRectF shape = rect.adjusted(0.5, 0.5, -0.5, -0.5);
    const qreal radius = round ? side / 2 : 3;
    painter->drawRoundedRect(shape, radius, radius);
    const QColor mark = enabled(option) ? c.accentText : c.window;
    if (round && on) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(mark);
        painter->drawEllipse(rect.center(), side / 5, side / 5);
    } else if (partly) {
        painter->setPen(QPen(mark, 2, Qt::SolidLine, Qt::RoundCap));
        painter->drawLine(rect.center() - QPointF(side / 4, 0), rect.center() + QPointF(side / 4, 0));
    } else if (on) {
        checkMark(painter, rect, mark);
    }
    painter->restore();
}

void slider(const QStyleOptionSlider *option, QPainter *painter, const QWidget *widget)
{
    const theme::Colors c = colorsOf(widget);
    const QRectF groove =
        widget->style()->subControlRect(QStyle::CC_Slider, option, QStyle::SC_SliderGroove, widget);
    const QRectF handle =
        widget->style()->subControlRect(QStyle::CC_Slider, option, QStyle::SC_SliderHandle, widget);
    const bool flat = option->orientation == Qt::Horizontal;
    QRectF line =
        flat ? QRectF(groove.left(), groove.center().y() - grooveHeight / 2.0, groove.width(), grooveHeight)
             : QRectF(groove.center().x() - grooveHeight / 2.0, groove.top(), grooveHeight, groove.height());
    const QColor accent = enabled(option) ? c.accent : c.borderHover;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(c.track);
    painter->drawRoundedRect(line, grooveHeight / 2.0, grooveHeight / 2.0);
    const bool fromEnd = option->upsideDown;
    if (flat)
        fromEnd ? line.setLeft(handle.center().x()) : line.setRight(handle.center().x());
    else
        fromEnd ? line.setTop(handle.center().y()) : line.setBottom(handle.center().y());
    painter->setBrush(accent);
    painter->drawRoundedRect(line, grooveHeight / 2.0, grooveHeight / 2.0);
    const qreal radius = std::min(handle.width(), handle.height()) / 2 - 1;
    painter->setPen(QPen(c.borderHover, 1));
    painter->setBrush(c.card);
    painter->drawEllipse(handle.center(), radius, radius);
    painter->setPen(Qt::NoPen);
    painter->setBrush(accent);
    const qreal dot = radius * (pressed(option) ? 0.45 : hovered(option) ? 0.7 : 0.58);
    painter->drawEllipse(handle.center(), dot, dot);
    painter->restore();
    if (focused(option))
        theme::paintFocusRing(*painter, handle, c, static_cast<int>(handle.height() / 2));
}

void comboBox(const QStyleOptionComboBox *option, QPainter *painter, const QWidget *widget)
{
    const theme::Colors c = colorsOf(widget);
    field(option, painter, widget, option->editable ? c.field : fillOf(option, c));
    const QRect arrow =
        widget->style()->subControlRect(QStyle::CC_ComboBox, option, QStyle::SC_ComboBoxArrow, widget);
    chevron(painter, arrow, enabled(option) ? c.textMuted : c.borderHover, false);
}

void spinBox(const QStyleOptionSpinBox *option, QPainter *painter, const QWidget *widget)
{
    const theme::Colors c = colorsOf(widget);
    if (option->frame)
        field(option, painter, widget, c.field);
    if (option->buttonSymbols == QAbstractSpinBox::NoButtons)
        return;
    const struct {
        QStyle::SubControl part;
        QAbstractSpinBox::StepEnabledFlag step;
        bool up;
    } arrows[] = {{QStyle::SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled, true},
                  {QStyle::SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled, false}};
    for (const auto &[part, step, up] : arrows) {
        const QRect rect = widget->style()->subControlRect(QStyle::CC_SpinBox, option, part, widget);
        const bool can = enabled(option) && (option->stepEnabled & step);
        if (can && (option->activeSubControls & part) && hovered(option))
            box(painter, QRectF(rect).adjusted(1, up ? 2 : 0, -2, up ? 0 : -2),
                pressed(option) ? c.cardPressed : c.track, {});
        chevron(painter, rect, can ? c.textMuted : c.borderHover, up);
    }
}

// The icon of a filled button is drawn as a silhouette in the text colour: its own colours would lack
// contrast.
QIcon silhouette(const QIcon &icon, const QSize &size, const QColor &color, qreal ratio)
{
    QPixmap pixmap = icon.pixmap(size, ratio);
    if (pixmap.isNull())
        return icon;
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    return pixmap;
}

void tab(const QStyleOptionTab *option, QPainter *painter, const QWidget *widget)
{
    const theme::Colors c = colorsOf(widget);
    const bool selected = option->state & QStyle::State_Selected;
    const QRectF rect = QRectF(option->rect).adjusted(1, 1, -1, -1);
    if (!selected && hovered(option))
        box(painter, rect, c.cardHover, {});
    if (focused(option))
        theme::paintFocusRing(*painter, rect, c, theme::controlRadius);
    if (!selected)
        return;
    QRectF line(rect.left() + theme::spaceTight, rect.bottom() - underline, rect.width() - theme::spaceSnug,
                underline);
    if (option->shape == QTabBar::RoundedSouth || option->shape == QTabBar::TriangularSouth)
        line.moveTop(rect.top());
    theme::paintBar(*painter, line, 1, c.accent, c.accent);
}

void headerSection(const QStyleOptionHeader *option, QPainter *painter, const QWidget *widget)
{
    const theme::Colors c = colorsOf(widget);
    const QRect rect = option->rect;
    painter->fillRect(rect, hovered(option) ? c.cardHover : c.card);
    painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), c.border);
    if (option->orientation == Qt::Horizontal)
        painter->fillRect(QRect(option->direction == Qt::RightToLeft ? rect.left() : rect.right(),
                                rect.top() + theme::spaceTight, 1, rect.height() - theme::spaceSnug),
                          c.border);
}

bool isHorizontal(const QStyleOptionTab *option)
{
    return option->shape == QTabBar::RoundedNorth || option->shape == QTabBar::RoundedSouth;
}

void progressBar(const QStyleOptionProgressBar *option, QPainter *painter, const QWidget *widget)
{
    const theme::Colors c = colorsOf(widget);
    const QRectF rect = option->rect;
    const qint64 range = qint64(option->maximum) - option->minimum;
    const double share = range > 0 ? double(qint64(option->progress) - option->minimum) / double(range) : 0;
    theme::paintBar(*painter, rect, share, c.accent, c.track, option->direction);
}

} // namespace

} // namespace flat

FlatStyle::FlatStyle() : QProxyStyle(QStringLiteral("Fusion"))
{
    setObjectName(QStringLiteral("fusion"));
}

void FlatStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                              const QWidget *widget) const
{
    switch (element) {
    case PE_PanelButtonCommand:
        if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option))
            return flat::pushButton(button, painter, widget);
        break;
    case PE_PanelButtonTool:
        return flat::toolButton(option, painter, widget);
    case PE_PanelLineEdit:
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            frame && frame->lineWidth > 0)
            flat::field(option, painter, widget, theme::colors(widget).field);
        return;
    case PE_FrameFocusRect:
        // Other controls draw their own focus, and lists show it by the selection.
        if (flat::isReachedByKey(option) &&
            (qobject_cast<const QCheckBox *>(widget) || qobject_cast<const QRadioButton *>(widget)))
            theme::paintFocusRing(*painter, option->rect, theme::colors(widget), theme::controlRadius);
        return;
    case PE_FrameLineEdit:
    case PE_FrameButtonBevel:
    case PE_FrameDefaultButton:
        return;
    case PE_Frame:
    case PE_FrameTabWidget:
        flat::box(painter, option->rect, {}, theme::colors(widget).border);
        return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        return flat::indicator(option, painter, widget, false);
    case PE_IndicatorRadioButton:
        return flat::indicator(option, painter, widget, true);
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void FlatStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                            const QWidget *widget) const
{
    if (element == CE_ProgressBarGroove)
        return;
    if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
        button && element == CE_PushButtonLabel && theme::isPrimary(widget) && flat::enabled(option)) {
        QStyleOptionButton label(*button);
        label.icon = flat::silhouette(button->icon, button->iconSize, theme::colors(widget).accentText,
                                      painter->device()->devicePixelRatio());
        return QProxyStyle::drawControl(element, &label, painter, widget);
    }
    if (element == CE_HeaderEmptyArea) {
        painter->fillRect(option->rect, theme::colors(widget).card);
        return;
    }
    if (const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option);
        header && element == CE_HeaderSection)
        return flat::headerSection(header, painter, widget);
    if (const auto *tab = qstyleoption_cast<const QStyleOptionTab *>(option);
        tab && element == CE_TabBarTabShape && flat::isHorizontal(tab))
        return flat::tab(tab, painter, widget);
    if (element == CE_ProgressBarContents) {
        const auto *bar = qstyleoption_cast<const QStyleOptionProgressBar *>(option);
        if (bar && (bar->minimum != 0 || bar->maximum != 0) && (bar->state & State_Horizontal))
            return flat::progressBar(bar, painter, widget);
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                   QPainter *painter, const QWidget *widget) const
{
    if (const auto *combo = qstyleoption_cast<const QStyleOptionComboBox *>(option);
        combo && widget && control == CC_ComboBox)
        return flat::comboBox(combo, painter, widget);
    if (const auto *spin = qstyleoption_cast<const QStyleOptionSpinBox *>(option);
        spin && widget && control == CC_SpinBox)
        return flat::spinBox(spin, painter, widget);
    if (const auto *range = qstyleoption_cast<const QStyleOptionSlider *>(option);
        range && widget && control == CC_Slider) {
        QStyleOptionSlider ticks(*range);
        ticks.subControls = SC_SliderTickmarks;
        QProxyStyle::drawComplexControl(control, &ticks, painter, widget);
        return flat::slider(range, painter, widget);
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    // Not together with the panel: an auto-raised button has none.
    if (control == CC_ToolButton && flat::focused(option) && flat::isReachedByKey(option))
        theme::paintFocusRing(*painter, option->rect, flat::colorsOf(widget), theme::controlRadius);
}

QRect FlatStyle::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
    if (element == SE_LineEditContents && frame && frame->lineWidth > 0)
        return rect.adjusted(flat::textPadding, 0, -flat::textPadding, 0);
    return rect;
}

QSize FlatStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                  const QWidget *widget) const
{
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    if (type == CT_PushButton && button && !button->text.isEmpty())
        result = QSize(std::max(result.width(), size.width() + 2 * flat::buttonPadding),
                       std::max(result.height(), theme::rowHeight));
    if (type == CT_LineEdit || type == CT_ComboBox || type == CT_SpinBox)
        result.setHeight(std::max(result.height(), theme::rowHeight));
    return result;
}

QPixmap FlatStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                       const QStyleOption *option) const
{
    return mode == QIcon::Selected ? pixmap : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}

int FlatStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                         QStyleHintReturn *data) const
{
    if (hint == SH_ComboBox_Popup)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
}
