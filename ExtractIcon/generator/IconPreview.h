// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QList>
#include <QWidget>

// Previews all sizes of the icon pixel by pixel, on light and on dark side by side.
class IconPreview : public QWidget
{
    Q_OBJECT

public:
    explicit IconPreview(QWidget *parent = nullptr);

    void setImages(const QList<QImage> &images);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void layOut();
    QSizeF shownSize(const QImage &image) const;

    QList<QImage> m_images; // largest first
};
