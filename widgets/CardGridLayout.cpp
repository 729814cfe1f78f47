// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/CardGridLayout.h"

#include <QStyle>
#include <QWidget>

CardGridLayout::CardGridLayout(int cellWidth, int widest, int spacing)
    : m_cellWidth(cellWidth),
      m_widest(widest)
{
    setSpacing(spacing);
    setContentsMargins(0, 0, 0, 0);
}

CardGridLayout::~CardGridLayout()
{
    qDeleteAll(m_items);
}

void CardGridLayout::addItem(QLayoutItem *item)
{
    m_items.append(item);
}

int CardGridLayout::count() const
{
    return static_cast<int>(m_items.size());
}

QLayoutItem *CardGridLayout::itemAt(int index) const
{
    return m_items.value(index);
}

QLayoutItem *CardGridLayout::takeAt(int index)
{
    return index >= 0 && index < count() ? m_items.takeAt(index) : nullptr;
}

Qt::Orientations CardGridLayout::expandingDirections() const
{
    return Qt::Horizontal;
}

bool CardGridLayout::hasHeightForWidth() const
{
    return true;
}

int CardGridLayout::heightForWidth(int width) const
{
    return arrange({0, 0, width, 0}, false);
}

QSize CardGridLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem *item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

QSize CardGridLayout::sizeHint() const
{
    return {3 * m_cellWidth, heightForWidth(3 * m_cellWidth)};
}

void CardGridLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

int CardGridLayout::arrange(const QRect &rect, bool place) const
{
    const int gap = spacing();
    const int columns = qMax(1, (rect.width() + gap) / (m_cellWidth + gap));
    const int width = qMin(m_widest, (rect.width() - (columns - 1) * gap) / columns);
    const Qt::LayoutDirection direction =
        parentWidget() ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    int column = 0;
    int y = 0;
    int rowHeight = 0;
    for (QLayoutItem *item : m_items) {
        if (item->isEmpty())
            continue; // hidden
        if (column == columns) {
            column = 0;
            y += rowHeight + gap;
            rowHeight = 0;
        }
        const int height = item->sizeHint().height();
        if (place) {
            const QRect cell(rect.x() + column * (width + gap), rect.y() + y, width, height);
            item->setGeometry(QStyle::visualRect(direction, rect, cell));
        }
        rowHeight = qMax(rowHeight, height);
        ++column;
    }
    return y + rowHeight;
}
