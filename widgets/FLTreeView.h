// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTreeView>
#include <QTreeWidget>

// A tree with the suite's rows: uniform heights (a must for trees of 100,000 rows), whole rows selected, the
// header with its sort arrow, no frame.
class FLTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit FLTreeView(QWidget *parent = nullptr);

    // Shows these columns in this order and hides the others; after setModel().
    void showColumns(const QList<int> &columns);
};

// The same look for short lists that hold their own items.
class FLTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit FLTreeWidget(QWidget *parent = nullptr);
};
