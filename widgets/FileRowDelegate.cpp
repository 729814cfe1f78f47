// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FileRowDelegate.h"

#include "widgets/FittedText.h"
#include "widgets/Theme.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QStringList>

namespace
{

constexpr int iconSize = 32;
constexpr int lineGap = 2;
constexpr int roundingRoom = 2;           // at fractional scales text is wider than its advance
constexpr double mutedOnSelection = 0.25; // how far muted lines are blended into the selection's background

QFont titleFont(const QStyleOptionViewItem &option, bool struck)
{
    QFont font = option.font;
    font.setWeight(QFont::DemiBold);
    font.setStrikeOut(struck);
    return font;
}

QColor toneColor(RowBadge::Tone tone, const theme::Colors &colors)
{
    switch (tone) {
    case RowBadge::Tone::Good:
        return colors.good;
    case RowBadge::Tone::Warning:
        return colors.warning;
    case RowBadge::Tone::Danger:
        return colors.danger;
    case RowBadge::Tone::Neutral:
        break;
    }
    return colors.textMuted;
}

class RowPainter
{
public:
    RowPainter(QPainter &painter, const QStyleOptionViewItem &item, const QModelIndex &index)
        : m_painter(painter),
          m_item(item),
          m_index(index),
          m_selected((item.state & QStyle::State_Selected) != 0)
    {
        const bool active = (item.state & QStyle::State_Active) != 0;
        const QPalette::ColorGroup group = (item.state & QStyle::State_Enabled) == 0 ? QPalette::Disabled
                                           : active                                  ? QPalette::Active
                                                                                     : QPalette::Inactive;
        const QColor background =
            item.palette.color(group, m_selected ? QPalette::Highlight : QPalette::Base);
        m_text = item.palette.color(group, m_selected ? QPalette::HighlightedText : QPalette::Text);
        m_muted = theme::mix(m_text, background, m_selected ? mutedOnSelection : 0.35);
        m_background = background;
    }

    void paint()
    {
        QRect area =
            m_item.rect.adjusted(theme::spaceSnug, theme::spaceSnug, -theme::spaceSnug, -theme::spaceSnug);
        const QRect iconArea(area.left(), area.top() + (area.height() - iconSize) / 2, iconSize, iconSize);
        m_item.icon.paint(&m_painter, QStyle::visualRect(m_item.direction, area, iconArea));
        area.setLeft(iconArea.right() + theme::space);
        paintLines(area);
    }

private:
    void paintLines(QRect area)
    {
        const QFont title = titleFont(m_item, m_index.data(FileRowDelegate::StruckRole).toBool());
        const QFont caption = theme::caption(m_item.font);
        QRect line(area.left(), area.top(), area.width(), QFontMetrics(title).height());
        paintText(line, title, m_text, m_index.data(FileRowDelegate::TitleRole).toString());
        const QStringList lines = m_index.data(FileRowDelegate::LinesRole).toStringList();
        for (qsizetype i = 0; i < lines.size(); ++i) {
            line =
                QRect(area.left(), line.bottom() + 1 + lineGap, area.width(), QFontMetrics(caption).height());
            if (i + 1 == lines.size())
                line.setRight(line.left() + paintBadges(line, caption, lines[i]));
            paintText(line, caption, m_muted, lines[i]);
        }
    }

    void paintText(const QRect &line, const QFont &font, const QColor &color, const QString &text)
    {
        m_painter.setFont(font);
        m_painter.setPen(color);
        const QRect place = QStyle::visualRect(m_item.direction, m_item.rect, line);
        const QString shown = fitted::elided(text, font, Qt::ElideMiddle, place.width());
        m_painter.drawText(place,
                           static_cast<int>(QStyle::visualAlignment(m_item.direction, Qt::AlignLeft)) |
                               Qt::AlignVCenter | Qt::TextSingleLine,
                           shown);
    }

    // After the line's text, as far as there is room. Returns the remaining width for the text.
    int paintBadges(const QRect &line, const QFont &font, const QString &text)
    {
        const auto badges = m_index.data(FileRowDelegate::BadgesRole).value<QList<RowBadge>>();
        const int textWidth = qMin(fitted::width(text, font) + 1, line.width());
        int left = line.left() + (text.isEmpty() ? 0 : textWidth + theme::spaceSnug);
        for (const RowBadge &badge : badges) {
            const int width = qMin(badgeWidth(font, badge), line.right() + 1 - left);
            if (width < 3 * theme::space)
                break;
            paintBadge(QRect(left, line.top(), width, line.height()), font, badge);
            left += width + theme::spaceSnug;
        }
        return textWidth;
    }

    static int badgeWidth(const QFont &font, const RowBadge &badge)
    {
        return fitted::width(badge.text, font) + 2 * theme::spaceSnug + roundingRoom;
    }

    void paintBadge(const QRect &place, const QFont &font, const RowBadge &badge)
    {
        const theme::Colors colors = theme::colors(m_item.palette);
        const QRect area = QStyle::visualRect(m_item.direction, m_item.rect, place);
        const QColor tone = toneColor(badge.tone, colors);
        const QColor fill =
            m_selected ? theme::mix(m_background, m_text, 0.15) : theme::mix(m_background, tone, 0.16);
        m_painter.save();
        m_painter.setRenderHint(QPainter::Antialiasing);
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(fill);
        m_painter.drawRoundedRect(area, area.height() / 2.0, area.height() / 2.0);
        m_painter.setFont(font);
        m_painter.setPen(m_selected ? m_text : theme::readable(tone, fill, 4.5)); // WCAG 2.1, AA: text
        const int inside = area.width() - 2 * theme::spaceSnug;
        m_painter.drawText(area, Qt::AlignCenter | Qt::TextSingleLine,
                           fitted::elided(badge.text, font, Qt::ElideMiddle, inside));
        m_painter.restore();
    }

    QPainter &m_painter;
    const QStyleOptionViewItem &m_item;
    const QModelIndex &m_index;
    bool m_selected;
    QColor m_text;
    QColor m_muted;
    QColor m_background;
};

} // namespace

QString accessibleRowText(const QString &text, const QList<RowBadge> &badges)
{
    QString result = text;
    for (const RowBadge &badge : badges)
        result += QLatin1String(", ") + badge.text;
    return result;
}

FileRowDelegate::FileRowDelegate(int lines, QObject *parent) : RowDelegate(parent), m_lines(lines) {}

QSize FileRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    const int title = QFontMetrics(titleFont(option, false)).height();
    const int line = QFontMetrics(theme::caption(option.font)).height() + lineGap;
    return {10 * theme::rowHeight, 2 * theme::spaceSnug + qMax(iconSize, title + m_lines * line)};
}

void FileRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const
{
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    QStyleOptionViewItem empty(item);
    empty.text.clear();
    empty.icon = QIcon();
    const QStyle *style = item.widget ? item.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &empty, painter, item.widget);
    painter->save();
    painter->setClipRect(item.rect);
    RowPainter(*painter, item, index).paint();
    painter->restore();
}

bool FileRowDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                                const QStyleOptionViewItem &option, const QModelIndex &index)
{
    // Uses the model's tool tip, since a row always shows less than its text.
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}
