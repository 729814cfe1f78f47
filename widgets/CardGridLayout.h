// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLayout>
#include <QList>

// Cells of equal width in as many columns as fit; the height of a row is that of its highest cell.
class CardGridLayout : public QLayout
{
public:
    // A cell is never narrower than `cellWidth`, unless the whole layout is, and never wider than `widest`.
    CardGridLayout(int cellWidth, int widest, int spacing);
    ~CardGridLayout() override;

    void addItem(QLayoutItem *item) override;
    int count() const override;
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;
    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect &rect) override;

private:
    // Returns the height; positions the cells if `place` is set.
    int arrange(const QRect &rect, bool place) const;

    QList<QLayoutItem *> m_items;
    int m_cellWidth;
    int m_widest;
};
