// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconImage.h"

#include <QList>
#include <QWidget>

// Images one below the other, as large as they are, each with its size and depth under it. Lies in a scroll
// area.
class IconSizesView : public QWidget
{
    Q_OBJECT

public:
    explicit IconSizesView(QWidget *parent = nullptr);

    // Largest first, whatever the order given.
    void setImages(QList<icons::IconImage> images);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QSize shownSize(const icons::IconImage &image) const;
    void layOut();

    QList<icons::IconImage> m_images;
    QList<QRect> m_places; // of the images, in the coordinates of a view of the width of sizeHint()
    QSize m_size;
};
