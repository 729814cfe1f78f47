// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/PictureDelegates.h"

#include "FindDuplicateImage/ImageGroupModel.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "widgets/Controls.h"
#include "widgets/FittedText.h"
#include "widgets/Theme.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QPixmap>

namespace
{

constexpr int groupImage = 56;
constexpr int memberImage = 88;
constexpr int cardWidth = 296;
constexpr int cardMargin = 3; // around a card; half the distance between cards
constexpr int cardLines = 5;
constexpr double goneOpacity = 0.35;

int lineHeight(const QFontMetrics &metrics)
{
    return metrics.height() + 1;
}

// Scaled to fit, with its aspect ratio, centred. Images with transparent parts get a tile in the window's
// colour behind them.
void paintPicture(QPainter &painter, const QPixmap &pixmap, const QRect &area, const theme::Colors &colors,
                  bool gone)
{
    static const QIcon missing = controls::image("Default");
    if (pixmap.isNull()) {
        const QRect place(area.center() - QPoint(12, 12), QSize(24, 24));
        missing.paint(&painter, place);
        return;
    }
    const QSize size = pixmap.size().scaled(area.size(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    const QRect place(area.left() + (area.width() - size.width()) / 2,
                      area.top() + (area.height() - size.height()) / 2, size.width(), size.height());
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (pixmap.hasAlpha())
        painter.fillRect(place, colors.track);
    painter.setOpacity(gone ? goneOpacity : 1.0);
    painter.drawPixmap(place, pixmap);
    painter.restore();
}

void paintLine(QPainter &painter, QRect &line, const QString &text, const QFont &font, const QColor &color,
               Qt::TextElideMode elide, Qt::LayoutDirection direction)
{
    painter.setFont(font);
    painter.setPen(color);
    const int flags = static_cast<int>(QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter)) |
                      Qt::TextSingleLine;
    painter.drawText(line, flags, fitted::elided(text, font, elide, line.width()));
    line.translate(0, line.height());
}

theme::CardState cardState(const QStyleOptionViewItem &option)
{
    if ((option.state & QStyle::State_Selected) != 0)
        return theme::CardState::Checked;
    return (option.state & QStyle::State_MouseOver) != 0 ? theme::CardState::Hover : theme::CardState::Rest;
}

bool hasVisibleFocus(const QStyleOptionViewItem &option)
{
    return (option.state & QStyle::State_HasFocus) != 0 && option.widget && option.widget->hasFocus() &&
           (option.state & QStyle::State_KeyboardFocusChange) != 0;
}

// Returns its right edge.
int paintPill(QPainter &painter, const QRect &area, const QString &text, const QFont &font,
              const QColor &color, const theme::Colors &colors)
{
    const QString shown = fitted::elided(text, font, Qt::ElideMiddle, area.width() - 2 * theme::spaceSnug);
    QRect pill(area.topLeft(),
               QSize(fitted::width(shown, font) + 2 * theme::spaceSnug, QFontMetrics(font).height() + 2));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::mix(colors.card, color, 0.18));
    painter.drawRoundedRect(pill, pill.height() / 2.0, pill.height() / 2.0);
    painter.setFont(font);
    painter.setPen(theme::readable(color, theme::mix(colors.card, color, 0.18), 4.5));
    painter.drawText(pill, Qt::AlignCenter | Qt::TextSingleLine, shown);
    painter.restore();
    return pill.right();
}

QColor noteColor(int kind, const theme::Colors &colors)
{
    switch (kind) {
    case ImageMemberModel::Proposal:
        return colors.good;
    case ImageMemberModel::Warning:
        return colors.warning;
    default:
        return colors.textMuted;
    }
}

void paintMemberTexts(QPainter &painter, const QRect &area, const QStyleOptionViewItem &option,
                      const QModelIndex &index)
{
    const theme::Colors colors = theme::colors(option.palette);
    const bool gone = index.data(ImageMemberModel::GoneRole).toBool();
    QFont bold = option.font;
    bold.setWeight(QFont::DemiBold);
    QRect line(area.left(), area.top(), area.width(), lineHeight(option.fontMetrics));
    paintLine(painter, line, index.data().toString(), bold, gone ? colors.textMuted : colors.text,
              Qt::ElideMiddle, option.direction);
    paintLine(painter, line, index.data(ImageMemberModel::FolderRole).toString(), option.font,
              colors.textMuted, Qt::ElideMiddle, option.direction);
    paintLine(painter, line, index.data(ImageMemberModel::FactsRole).toString(), option.font, colors.text,
              Qt::ElideRight, option.direction);
    paintLine(painter, line, index.data(ImageMemberModel::DateRole).toString(), option.font, colors.textMuted,
              Qt::ElideRight, option.direction);

    const QFont small = theme::caption(option.font);
    line.translate(0, 1);
    if (index.data(ImageMemberModel::FirstRole).toBool()) {
        const int end =
            paintPill(painter, line, ImageMemberDelegate::tr("First"), small, colors.accent, colors);
        line.setLeft(end + theme::spaceTight);
    }
    const QString note = index.data(ImageMemberModel::NoteRole).toString();
    if (!note.isEmpty())
        paintPill(painter, line, note, small,
                  noteColor(index.data(ImageMemberModel::NoteKindRole).toInt(), colors), colors);
}

} // namespace

QSize ImageGroupDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return {200, qMax(groupImage, 3 * lineHeight(option.fontMetrics)) + 2 * theme::spaceSnug};
}

void ImageGroupDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const
{
    const theme::Colors colors = theme::colors(option.palette);
    const bool gone = index.data(ImageGroupModel::GoneRole).toBool();
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    painter->save();
    if (selected)
        painter->fillRect(option.rect, colors.accentSoft);
    else if ((option.state & QStyle::State_MouseOver) != 0)
        painter->fillRect(option.rect, colors.cardHover);
    if (hasVisibleFocus(option))
        theme::paintFocusRing(*painter, option.rect, colors, theme::controlRadius);

    const QRect inner =
        option.rect.adjusted(theme::spaceSnug, theme::spaceSnug, -theme::spaceSnug, -theme::spaceSnug);
    QRect picture(inner.topLeft(), QSize(groupImage, inner.height()));
    QRect text = inner.adjusted(groupImage + theme::space, 0, 0, 0);
    picture = QStyle::visualRect(option.direction, inner, picture);
    text = QStyle::visualRect(option.direction, inner, text);
    paintPicture(*painter, index.data(Qt::DecorationRole).value<QPixmap>(), picture, colors, gone);

    const int height = lineHeight(option.fontMetrics);
    QRect line(text.left(), text.top() + (text.height() - 3 * height) / 2, text.width(), height);
    QFont bold = option.font;
    bold.setWeight(QFont::DemiBold);
    paintLine(*painter, line, index.data().toString(), bold, gone ? colors.textMuted : colors.text,
              Qt::ElideMiddle, option.direction);
    paintLine(*painter, line, index.data(ImageGroupModel::FolderRole).toString(), option.font,
              colors.textMuted, Qt::ElideMiddle, option.direction);
    paintLine(*painter, line, index.data(ImageGroupModel::DetailRole).toString(), option.font,
              colors.textMuted, Qt::ElideRight, option.direction);
    painter->restore();
}

QSize ImageMemberDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return {cardWidth, qMax(memberImage, cardLines * lineHeight(option.fontMetrics) + 2) +
                           2 * (theme::spaceSnug + cardMargin)};
}

void ImageMemberDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                const QModelIndex &index) const
{
    const theme::Colors colors = theme::colors(option.palette);
    const QRect card = option.rect.adjusted(cardMargin, cardMargin, -cardMargin, -cardMargin);
    painter->save();
    theme::paintCard(*painter, card, colors, cardState(option), hasVisibleFocus(option));
    const QRect inner =
        card.adjusted(theme::spaceSnug, theme::spaceSnug, -theme::spaceSnug, -theme::spaceSnug);
    const QRect picture(inner.topLeft(), QSize(memberImage, inner.height()));
    const QRect texts = inner.adjusted(memberImage + theme::space, 0, 0, 0);
    paintPicture(*painter, index.data(Qt::DecorationRole).value<QPixmap>(),
                 QStyle::visualRect(option.direction, inner, picture), colors,
                 index.data(ImageMemberModel::GoneRole).toBool());
    paintMemberTexts(*painter, QStyle::visualRect(option.direction, inner, texts), option, index);
    painter->restore();
}
