// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTreeView>
#include <QTreeWidget>

// A tree with the suite's row style: uniform heights (required for trees of 100,000 rows), full-row
// selection, a sortable header. Keys that would visit all rows of a large tree are disabled: "*" for
// expanding, and type-ahead search above typeahead::maxRows rows.
class FLTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit FLTreeView(QWidget *parent = nullptr);

    // Shows these columns in this order and hides all others; call after setModel().
    void showColumns(const QList<int> &columns);
    // This column takes the remaining width, but at least `minWidth`: then the view scrolls. Until the user
    // resizes it.
    void setStretchColumn(int column, int minWidth);
    // Changes the minimum width of that column.
    void setStretchMinimum(int minWidth);
    // Shown while there is no row.
    void setPlaceholder(const QString &text);

    void keyboardSearch(const QString &search) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void stretch();
    int expandedRows() const;

    int m_stretchColumn = -1;
    int m_minWidth = 0;
    bool m_stretching = false;
    QString m_placeholder;
};

// The same style for short lists that store their own items.
class FLTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit FLTreeWidget(QWidget *parent = nullptr);

    // Shown while the list is empty.
    void setPlaceholder(const QString &text);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_placeholder;
};
