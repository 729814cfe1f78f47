// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconImage.h"

#include <QList>
#include <QWidget>

// Shows images in a column at their original size, each with its size and depth below. For use in a scroll
// area.
class IconSizesView : public QWidget
{
    Q_OBJECT

public:
    explicit IconSizesView(QWidget *parent = nullptr);

    // Sorted by size, largest first.
    void setImages(QList<icons::IconImage> images);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QSize shownSize(const icons::IconImage &image) const;
    void layOut();

    QList<icons::IconImage> m_images;
    QList<QRect> m_places; // image positions, for a view of the width of sizeHint()
    QSize m_size;
};
