// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/PicturePair.h"

#include <QPointF>
#include <QWidget>

// Two images side by side, or their difference. Both are shown at the same size and position whatever their
// own sizes; zooming and dragging affects both.
class CompareView : public QWidget
{
    Q_OBJECT

public:
    static constexpr double maxZoom = 32;

    explicit CompareView(QWidget *parent = nullptr);

    // A text shown while there is no image.
    void showMessage(const QString &text);
    void showPair(const PicturePair &pair);
    const PicturePair &pair() const { return m_pair; }

    void setDifference(bool difference);
    bool showsDifference() const { return m_difference; }
    // 1 fits the images into the view.
    double zoom() const { return m_zoom; }
    void setZoom(double zoom);
    // The zoom at which one image pixel of the first image is one screen pixel.
    double actualSizeZoom() const;

    QSize sizeHint() const override { return {600, 260}; }

signals:
    void zoomChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Pane {
        const QImage *full;
        const QImage *fitted;
        QRect area;
        QString absent; // shown if there is no image
    };
    QList<Pane> panes() const;
    // The rectangle of a whole image shown in `area`; mostly outside of it when zoomed in.
    QRectF place(const QSize &picture, const QRect &area) const;
    void paintPane(QPainter &painter, const Pane &pane) const;
    void zoomAt(double zoom, const QPointF &point);
    void moveBy(const QPointF &pixels);
    void keepInside();

    PicturePair m_pair;
    QString m_message;
    bool m_difference = false;
    double m_zoom = 1;
    QPointF m_center{0.5, 0.5}; // centre of the view as a fraction of the image
    QPointF m_dragFrom;
    bool m_dragging = false;
};
