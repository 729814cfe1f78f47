// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/RowDelegate.h"

#include "widgets/FittedText.h"
#include "widgets/Theme.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace
{

constexpr double minContrast = 2;
constexpr double trackStrength = 0.12;

// Room for "100.0 %", so that all bars of a column are aligned.
int numberWidth(const QFont &font)
{
    return fitted::width(QStringLiteral("100.0 %"), font);
}

const QStyle &styleOf(const QStyleOptionViewItem &item)
{
    return item.widget ? *item.widget->style() : *QApplication::style();
}

bool isSelected(const QStyleOptionViewItem &item)
{
    return (item.state & QStyle::State_Selected) != 0;
}

QPalette::ColorGroup colorGroup(const QStyleOptionViewItem &item)
{
    return (item.state & QStyle::State_Enabled) == 0  ? QPalette::Disabled
           : (item.state & QStyle::State_Active) != 0 ? QPalette::Active
                                                      : QPalette::Inactive;
}

QColor textColor(const QStyleOptionViewItem &item)
{
    return item.palette.color(colorGroup(item),
                              isSelected(item) ? QPalette::HighlightedText : QPalette::Text);
}

// The text elided to the width. A very long text is shortened in the middle first, to keep measuring cheap.
QString fitting(const QString &text, const QStyleOptionViewItem &item, int width)
{
    const int narrowest = qMax(1, item.fontMetrics.averageCharWidth() / 2);
    const qsizetype maxLength = qMax(0, width) / narrowest + 2;
    if (text.size() <= maxLength || item.textElideMode != Qt::ElideMiddle)
        return fitted::elided(text, item.font, item.textElideMode, width);
    const QString ends = text.first(maxLength / 2) + QChar(0x2026) + text.last(maxLength / 2);
    return fitted::elided(ends, item.font, item.textElideMode, width);
}

} // namespace

void RowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    const QString text = std::exchange(item.text, QString());
    const QStyle &style = styleOf(item);
    // Background, check box and icon.
    style.drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &item, item.widget) + 1;
    const QRect area =
        style.subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget).adjusted(margin, 0, -margin, 0);
    painter->setPen(textColor(item));
    painter->setFont(item.font);
    painter->drawText(area,
                      static_cast<int>(QStyle::visualAlignment(item.direction, item.displayAlignment)) |
                          Qt::TextSingleLine,
                      fitting(text, item, area.width()));
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return {size.width(), qMax(theme::rowHeight, option.fontMetrics.height() + theme::spaceSnug)};
}

QString RowDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return value.toString();
    default:
        return QStyledItemDelegate::displayText(value, locale);
    }
}

bool RowDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                            const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || index.data(Qt::ToolTipRole).isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString text = displayText(index.data(Qt::DisplayRole), option.locale);
    const bool cut = QStyledItemDelegate::sizeHint(option, index).width() > view->visualRect(index).width();
    QToolTip::showText(event->globalPos(), cut ? text : QString(), view);
    return true;
}

QString BarDelegate::percentText(double percent)
{
    return QString::number(percent, 'f', 1) + QStringLiteral(" %");
}

QString BarDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    return value.typeId() == QMetaType::Double ? percentText(value.toDouble())
                                               : RowDelegate::displayText(value, locale);
}

QColor BarDelegate::barColor(const QModelIndex &index, const QPalette &palette)
{
    const QVariant chart = index.data(ChartIndexRole);
    if (!chart.isValid())
        return theme::colors(palette).accent;
    return chart.toInt() < 0 ? theme::chartRestColor(palette) : theme::chartColor(chart.toInt(), palette);
}

void BarDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    const QString text = item.text;
    item.text.clear();
    styleOf(item).drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    const bool selected = isSelected(item);
    const QColor background =
        item.palette.color(colorGroup(item), selected ? QPalette::Highlight : QPalette::Base);
    const QColor pen = textColor(item);
    const int number = numberWidth(item.font);
    const QRect area = item.rect.adjusted(theme::spaceSnug, 0, -theme::spaceSnug, 0);
    QRect barArea = area;
    barArea.setWidth(qMax(0, area.width() - number - theme::spaceSnug));
    QRect textArea = area;
    textArea.setLeft(area.right() - number);
    barArea = QStyle::visualRect(item.direction, area, barArea);
    textArea = QStyle::visualRect(item.direction, area, textArea);

    painter->setPen(pen);
    painter->setFont(item.font);
    painter->drawText(textArea, Qt::AlignVCenter | Qt::AlignRight | Qt::TextSingleLine, text);
    if (barArea.width() < theme::barHeight * 2)
        return;
    QRectF bar(barArea);
    bar.setTop(bar.center().y() - theme::barHeight / 2.0);
    bar.setHeight(theme::barHeight);
    // On a selected row the bar has the colour of the text if its own would be invisible.
    QColor fill = barColor(index, item.palette);
    if (selected && theme::contrast(fill, background) < minContrast)
        fill = pen;
    const double share = index.data(Qt::EditRole).toDouble() / 100;
    theme::paintBar(*painter, bar, share, fill, theme::mix(background, pen, trackStrength), item.direction);
}
