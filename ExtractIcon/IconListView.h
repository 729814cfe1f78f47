// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListView>

class QSortFilterProxyModel;

namespace icons
{

// The grid of icons with a filter by number. All rows are those of the model that it was given, whatever the
// filter.
class IconListView : public QListView
{
    Q_OBJECT

public:
    IconListView(QAbstractItemModel *records, QWidget *parent);

    int rowOf(const QModelIndex &shown) const;
    QList<int> selectedRows() const; // ascending
    int currentRow() const;          // -1 for none
    void selectFirst();

    // Shows the icons whose number contains this text, all for an empty one. Makes an exact match the current
    // row, otherwise the first match. Returns the number of icons shown.
    int showMatches(const QString &number);
    // Shows all again; does not change the current row.
    void showAll();

signals:
    void exportRequested();
    void copyRequested();

private:
    QSortFilterProxyModel *m_proxy;
};

} // namespace icons
