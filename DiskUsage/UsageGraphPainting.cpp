// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/UsageGraph.h"

#include "core/FileTypes.h"
#include "core/SizeText.h"
#include "widgets/Theme.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <map>

using diskusage::UsageNode;

namespace
{

constexpr int corner = 3;
constexpr int swatch = 10;
constexpr int fewestLetters = 7;

} // namespace

void UsageGraph::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const theme::Colors colors = theme::colors(this);
    if (m_boxes.empty()) {
        painter.setPen(colors.textMuted);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, m_emptyText);
        return;
    }
    if (m_picture.isNull() || m_picture.devicePixelRatio() != devicePixelRatio()) {
        m_picture = QPixmap(size() * devicePixelRatio());
        m_picture.setDevicePixelRatio(devicePixelRatio());
        m_picture.fill(Qt::transparent);
        QPainter picture(&m_picture);
        picture.setFont(font());
        paintPicture(picture);
    }
    painter.drawPixmap(0, 0, m_picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    if (m_hovered >= 0) {
        painter.setPen(QPen(colors.text, 1.5));
        painter.drawRoundedRect(m_boxes[static_cast<std::size_t>(m_hovered)].rect, corner, corner);
    }
    if (m_current >= 0) {
        painter.setPen(QPen(hasFocus() ? colors.accent : colors.textMuted, 3));
        painter.drawRoundedRect(m_boxes[static_cast<std::size_t>(m_current)].rect, corner, corner);
    }
}

QColor UsageGraph::fill(const Box &box) const
{
    const theme::Colors colors = theme::colors(this);
    switch (box.node->kind) {
    case UsageNode::Kind::Folder:
        return theme::mix(colors.card, colors.accent, box.divided ? 0.06 + 0.05 * box.depth : 0.24);
    case UsageNode::Kind::Rest:
        return theme::mix(colors.card, colors.text, 0.09);
    default:
        return box.node->category < 0 ? theme::chartRestColor(palette())
                                      : theme::chartColor(box.node->category, palette());
    }
}

void UsageGraph::paintPicture(QPainter &painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Box &box : m_boxes)
        paintBox(painter, box);
    const int legend = fontMetrics().height() + theme::spaceTight;
    paintLegend(painter, QRect(0, height() - legend, width(), legend));
}

void UsageGraph::paintBox(QPainter &painter, const Box &box) const
{
    const theme::Colors colors = theme::colors(this);
    const QColor color = fill(box);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(box.rect, corner, corner);
    if (box.node->kind == UsageNode::Kind::Rest) {
        painter.setBrush(QBrush(theme::mix(color, colors.text, 0.12), Qt::BDiagPattern));
        painter.drawRoundedRect(box.rect, corner, corner);
    }

    const QFontMetrics metrics(font());
    const QRectF room = box.rect.adjusted(theme::spaceTight, 2, -theme::spaceTight, -2);
    const QString name = box.node->kind == UsageNode::Kind::Rest ? tr("Everything else") : box.node->name;
    // A name cut down to a few letters is useless.
    const int letters = static_cast<int>(qMin<qsizetype>(name.size(), fewestLetters));
    if (room.height() < metrics.height() || room.width() < letters * metrics.averageCharWidth())
        return;
    const QString size = core::sizeText(box.node->bytes);
    painter.setPen(theme::readable(colors.text, color, 4.5));
    QFont bold(font());
    bold.setWeight(QFont::DemiBold);
    if (box.divided) {
        // One line: the name, and the size where both fit.
        const int sizeWidth = metrics.horizontalAdvance(size) + theme::spaceSnug;
        const bool both = room.width() > sizeWidth + QFontMetrics(bold).horizontalAdvance(name);
        if (both)
            painter.drawText(room, Qt::AlignTop | Qt::AlignTrailing | Qt::TextSingleLine, size);
        painter.setFont(bold);
        painter.drawText(
            room, Qt::AlignTop | Qt::AlignLeading | Qt::TextSingleLine,
            QFontMetrics(bold).elidedText(name, Qt::ElideMiddle, static_cast<int>(room.width())));
        painter.setFont(font());
        return;
    }
    painter.drawText(room, Qt::AlignTop | Qt::AlignLeading | Qt::TextSingleLine,
                     metrics.elidedText(name, Qt::ElideMiddle, static_cast<int>(room.width())));
    const bool second =
        room.height() >= 2 * metrics.height() && metrics.horizontalAdvance(size) <= room.width();
    if (second) {
        painter.setFont(theme::caption(font()));
        painter.drawText(room.adjusted(0, metrics.height(), 0, 0),
                         Qt::AlignTop | Qt::AlignLeading | Qt::TextSingleLine, size);
        painter.setFont(font());
    }
}

void UsageGraph::paintLegend(QPainter &painter, const QRect &area) const
{
    // The file types in the treemap, the largest total first, as many as there is room for.
    std::map<int, quint64> bytes;
    for (const Box &box : m_boxes)
        if (box.node->kind == UsageNode::Kind::File)
            bytes[box.node->category] += box.node->bytes;
    std::vector<std::pair<quint64, int>> order;
    for (const auto &[category, total] : bytes)
        order.emplace_back(total, category);
    std::sort(order.rbegin(), order.rend());

    const QFont small = theme::caption(font());
    const QFontMetrics metrics(small);
    painter.setFont(small);
    int x = area.left();
    for (const auto &[total, category] : order) {
        const QString name = m_categories.value(category, tr("Other file types"));
        const int width = swatch + theme::spaceTight + metrics.horizontalAdvance(name);
        if (x + width > area.right())
            break;
        const QRect cell = QStyle::visualRect(layoutDirection(), area, {x, area.top(), width, area.height()});
        QRectF box(0, 0, swatch, swatch);
        box.moveCenter(cell.center());
        box.moveLeft(layoutDirection() == Qt::LeftToRight ? cell.left() : cell.right() - swatch);
        painter.setPen(Qt::NoPen);
        painter.setBrush(category < 0 ? theme::chartRestColor(palette())
                                      : theme::chartColor(category, palette()));
        painter.drawRoundedRect(box, 2, 2);
        painter.setPen(theme::colors(this).textMuted);
        painter.drawText(cell, Qt::AlignVCenter | Qt::AlignTrailing | Qt::TextSingleLine, name);
        x += width + theme::space;
    }
    painter.setFont(font());
}
