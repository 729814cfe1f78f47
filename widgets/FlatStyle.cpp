// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FlatStyle.h"

#include "widgets/FlatPainter.h"
#include "widgets/Theme.h"

#include <QCheckBox>
#include <QPainter>
#include <QRadioButton>
#include <QStyleOption>
#include <QTabBar>
#include <QWidget>

#include <algorithm>

namespace
{

constexpr int buttonPadding = 10; // left and right padding of a button
constexpr int textPadding = 4;    // left and right padding of a line edit, in addition to the base style's

// Whether the focus should be shown even after a click, or on the first widget of a page.
bool isReachedByKey(const QStyleOption *option)
{
    return option->state & QStyle::State_KeyboardFocusChange;
}

bool isHorizontal(const QStyleOptionTab *option)
{
    return option->shape == QTabBar::RoundedNorth || option->shape == QTabBar::RoundedSouth;
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

} // namespace

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
            return FlatPainter(painter, widget).pushButton(button);
        break;
    case PE_PanelButtonTool:
        return FlatPainter(painter, widget).toolButton(option);
    case PE_PanelLineEdit:
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            frame && frame->lineWidth > 0)
            FlatPainter(painter, widget).field(option, theme::colors(widget).field);
        return;
    case PE_FrameFocusRect:
        // Other controls draw their own focus, and lists show it by the selection.
        if (isReachedByKey(option) &&
            (qobject_cast<const QCheckBox *>(widget) || qobject_cast<const QRadioButton *>(widget)))
            theme::paintFocusRing(*painter, option->rect, theme::colors(widget), theme::controlRadius);
        return;
    case PE_FrameLineEdit:
    case PE_FrameButtonBevel:
    case PE_FrameDefaultButton:
        return;
    case PE_Frame:
    case PE_FrameTabWidget:
        FlatPainter(painter, widget).box(option->rect, {}, theme::colors(widget).border);
        return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        return FlatPainter(painter, widget).indicator(option, false);
    case PE_IndicatorRadioButton:
        return FlatPainter(painter, widget).indicator(option, true);
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
        button && element == CE_PushButtonLabel && theme::isPrimary(widget) && FlatPainter::enabled(option)) {
        QStyleOptionButton label(*button);
        label.icon = silhouette(button->icon, button->iconSize, theme::colors(widget).accentText,
                                painter->device()->devicePixelRatio());
        return QProxyStyle::drawControl(element, &label, painter, widget);
    }
    if (element == CE_HeaderEmptyArea) {
        painter->fillRect(option->rect, theme::colors(widget).card);
        return;
    }
    if (const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option);
        header && element == CE_HeaderSection)
        return FlatPainter(painter, widget).headerSection(header);
    if (const auto *tab = qstyleoption_cast<const QStyleOptionTab *>(option);
        tab && element == CE_TabBarTabShape && isHorizontal(tab))
        return FlatPainter(painter, widget).tab(tab);
    if (element == CE_ProgressBarContents) {
        const auto *bar = qstyleoption_cast<const QStyleOptionProgressBar *>(option);
        if (bar && (bar->minimum != 0 || bar->maximum != 0) && (bar->state & State_Horizontal))
            return FlatPainter(painter, widget).progressBar(bar);
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                   QPainter *painter, const QWidget *widget) const
{
    if (const auto *combo = qstyleoption_cast<const QStyleOptionComboBox *>(option);
        combo && widget && control == CC_ComboBox)
        return FlatPainter(painter, widget).comboBox(combo);
    if (const auto *spin = qstyleoption_cast<const QStyleOptionSpinBox *>(option);
        spin && widget && control == CC_SpinBox)
        return FlatPainter(painter, widget).spinBox(spin);
    if (const auto *range = qstyleoption_cast<const QStyleOptionSlider *>(option);
        range && widget && control == CC_Slider) {
        QStyleOptionSlider ticks(*range);
        ticks.subControls = SC_SliderTickmarks;
        QProxyStyle::drawComplexControl(control, &ticks, painter, widget);
        return FlatPainter(painter, widget).slider(range);
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    // Not together with the panel: an auto-raised button has none.
    if (control == CC_ToolButton && FlatPainter::focused(option) && isReachedByKey(option))
        theme::paintFocusRing(*painter, option->rect, theme::colors(widget), theme::controlRadius);
}

QRect FlatStyle::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
    if (element == SE_LineEditContents && frame && frame->lineWidth > 0)
        return rect.adjusted(textPadding, 0, -textPadding, 0);
    return rect;
}

QSize FlatStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                  const QWidget *widget) const
{
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    if (type == CT_PushButton && button && !button->text.isEmpty())
        result = QSize(std::max(result.width(), size.width() + 2 * buttonPadding),
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
