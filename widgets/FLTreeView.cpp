// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FLTreeView.h"

#include "widgets/RowDelegate.h"

#include <QHeaderView>

namespace
{

void dress(QTreeView *view)
{
    view->setItemDelegate(new RowDelegate(view));
    view->setUniformRowHeights(true);
    view->setAllColumnsShowFocus(true);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setFrameShape(QFrame::NoFrame);
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
}

void FLTreeView::showColumns(const QList<int> &columns)
{
    for (int column = 0; column < header()->count(); ++column)
        setColumnHidden(column, !columns.contains(column));
    for (int position = 0; position < columns.size(); ++position)
        header()->moveSection(header()->visualIndex(columns.at(position)), position);
}

FLTreeWidget::FLTreeWidget(QWidget *parent) : QTreeWidget(parent)
{
    dress(this);
}
