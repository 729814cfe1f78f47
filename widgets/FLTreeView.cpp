// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FLTreeView.h"

#include "widgets/RowDelegate.h"
#include "widgets/Theme.h"

#include <QHeaderView>
#include <QPainter>

namespace
{

void dress(QTreeView *view)
{
    view->setItemDelegate(new RowDelegate(view));
    view->setUniformRowHeights(true);
    view->setAllColumnsShowFocus(true);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setFrameShape(QFrame::StyledPanel);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setTextElideMode(Qt::ElideMiddle);
    view->header()->setHighlightSections(false);
}

} // namespace

FLTreeView::FLTreeView(QWidget *parent) : QTreeView(parent)
{
    dress(this);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(header(), &QHeaderView::sectionResized, this, [this](int resized) {
        if (resized == m_stretchColumn && !m_stretching)
            m_stretchColumn = -1;
    });
}

void FLTreeView::showColumns(const QList<int> &columns)
{
    for (int column = 0; column < header()->count(); ++column)
        setColumnHidden(column, !columns.contains(column));
    for (int position = 0; position < columns.size(); ++position)
        header()->moveSection(header()->visualIndex(columns.at(position)), position);
}

void FLTreeView::setStretchColumn(int column, int smallest)
{
    m_stretchColumn = column;
    m_smallest = smallest;
    header()->setStretchLastSection(false);
    stretch();
}

void FLTreeView::stretch()
{
    if (m_stretchColumn < 0 || header()->count() <= m_stretchColumn)
        return;
    const int others = header()->length() - header()->sectionSize(m_stretchColumn);
    m_stretching = true;
    header()->resizeSection(m_stretchColumn, qMax(m_smallest, viewport()->width() - others));
    m_stretching = false;
}

void FLTreeView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    stretch();
}

FLTreeWidget::FLTreeWidget(QWidget *parent) : QTreeWidget(parent)
{
    dress(this);
}

void FLTreeWidget::setPlaceholder(const QString &text)
{
    m_placeholder = text;
    viewport()->update();
}

void FLTreeWidget::paintEvent(QPaintEvent *event)
{
    QTreeWidget::paintEvent(event);
    if (topLevelItemCount() > 0 || m_placeholder.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(theme::colors(this).textMuted);
    painter.drawText(viewport()->rect().adjusted(theme::space, theme::space, -theme::space, -theme::space),
                     Qt::AlignCenter | Qt::TextWordWrap, m_placeholder);
}
