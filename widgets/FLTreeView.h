// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTreeView>
#include <QTreeWidget>

// A tree with the suite's rows: uniform heights (a must for trees of 100,000 rows), whole rows selected, the
// header with its sort arrow. Keys that would visit all rows of a large tree do nothing: "*" expands no
// branch, and above typeahead::maxRows rows typing looks for none.
class FLTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit FLTreeView(QWidget *parent = nullptr);

    // Shows these columns in this order and hides the others; after setModel().
    void showColumns(const QList<int> &columns);
    // Gives this column what the others leave, but never less than `smallest`: then the view scrolls. Until
    // the user sizes it.
    void setStretchColumn(int column, int smallest);
    // Changes how narrow that column may become.
    void setStretchMinimum(int smallest);
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
    int m_smallest = 0;
    bool m_stretching = false;
    QString m_placeholder;
};

// The same look for short lists that hold their own items.
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
