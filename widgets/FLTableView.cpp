// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FLTableView.h"

#include "widgets/RowDelegate.h"
#include "widgets/Theme.h"
#include "widgets/TypeAhead.h"

#include <QHeaderView>

FLTableView::FLTableView(QWidget *parent) : QTableView(parent)
{
    setItemDelegate(new RowDelegate(this));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setFrameShape(QFrame::StyledPanel);
    setShowGrid(false);
    setWordWrap(false);
    setTextElideMode(Qt::ElideMiddle);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setSortingEnabled(true);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(
        qMax(theme::rowHeight, fontMetrics().height() + theme::spaceSnug));
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
}

void FLTableView::showColumns(const QList<int> &columns)
{
    for (int column = 0; column < horizontalHeader()->count(); ++column)
        setColumnHidden(column, !columns.contains(column));
}

void FLTableView::keyboardSearch(const QString &search)
{
    if (model() && model()->rowCount(rootIndex()) <= typeahead::maxRows)
        QTableView::keyboardSearch(search);
}
