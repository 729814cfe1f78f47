// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FLTreeView.h"

#include "widgets/RowDelegate.h"
#include "widgets/Theme.h"
#include "widgets/TypeAhead.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

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

void paintPlaceholder(QWidget *viewport, const QString &text)
{
    QPainter painter(viewport);
    painter.setPen(theme::colors(viewport).textMuted);
    painter.drawText(viewport->rect().adjusted(theme::space, theme::space, -theme::space, -theme::space),
                     Qt::AlignCenter | Qt::TextWordWrap, text);
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

void FLTreeView::setStretchColumn(int column, int minWidth)
{
    m_stretchColumn = column;
    m_minWidth = minWidth;
    header()->setStretchLastSection(false);
    stretch();
}

void FLTreeView::setPlaceholder(const QString &text)
{
    m_placeholder = text;
    viewport()->update();
}

void FLTreeView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    if (!model() || model()->rowCount(rootIndex()) == 0)
        paintPlaceholder(viewport(), m_placeholder);
}

void FLTreeView::setStretchMinimum(int minWidth)
{
    m_minWidth = minWidth;
    stretch();
}

void FLTreeView::stretch()
{
    if (m_stretchColumn < 0 || header()->count() <= m_stretchColumn)
        return;
    const int others = header()->length() - header()->sectionSize(m_stretchColumn);
    m_stretching = true;
    header()->resizeSection(m_stretchColumn, qMax(m_minWidth, viewport()->width() - others));
    m_stretching = false;
}

void FLTreeView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    stretch();
}

void FLTreeView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Asterisk)
        event->ignore();
    else
        QTreeView::keyPressEvent(event);
}

void FLTreeView::keyboardSearch(const QString &search)
{
    if (expandedRows() <= typeahead::maxRows)
        QTreeView::keyboardSearch(search);
}

// Derived from the scroll range; counting the rows would visit them all. All have the same height and are
// scrolled by pixels.
int FLTreeView::expandedRows() const
{
    const int height = model() ? rowHeight(model()->index(0, 0, rootIndex())) : 0;
    return height > 0 ? (verticalScrollBar()->maximum() + viewport()->height()) / height : 0;
}

FLTreeWidget::FLTreeWidget(QWidget *parent) : QTreeWidget(parent)
{
    dress(this);
}

// A list indicates its focus through a selected row.
void FLTreeWidget::focusInEvent(QFocusEvent *event)
{
    QTreeWidget::focusInEvent(event);
    const bool byKey = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKey && !selectionModel()->hasSelection() && topLevelItemCount() > 0)
        setCurrentItem(currentItem() ? currentItem() : topLevelItem(0));
}

void FLTreeWidget::setPlaceholder(const QString &text)
{
    m_placeholder = text;
    viewport()->update();
}

void FLTreeWidget::paintEvent(QPaintEvent *event)
{
    QTreeWidget::paintEvent(event);
    if (topLevelItemCount() == 0)
        paintPlaceholder(viewport(), m_placeholder);
}
