// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/preview/PreviewRenderer.h"

#include <QWidget>

#include <memory>
#include <optional>

// Shows a rendered image: fitted or zoomed, before or after the steps, or both separated by a movable line.
// Marks are placed by dragging. Only what is visible is computed.
class PreviewView : public QWidget
{
    Q_OBJECT

public:
    enum class Show { After, Before, Split };
    static constexpr double maxZoom = 8.0;

    explicit PreviewView(QWidget *parent = nullptr);

    void setPicture(const std::shared_ptr<const PreviewImage> &picture);
    // Shown instead of an image.
    void setMessage(const QString &message);
    bool isEmpty() const { return !m_picture; }
    void setShow(Show show);
    Show shown() const { return m_show; }

    // 1 maps an image pixel to a screen pixel; 0 fits the image to the view.
    void setZoom(double zoom);
    void zoomIn();
    void zoomOut();
    QString zoomText() const; // "45 %"

    QSize sizeHint() const override { return {420, 320}; }
    QSize minimumSizeHint() const override { return {160, 120}; }

signals:
    void zoomChanged();
    // A mark was dropped: `margin` is its distance from the edges that the position names.
    void markPlaced(conversion::MarkKind kind, conversion::Position position, int margin);
    void resized(); // the size changed, so images fitted to the view are outdated

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    enum class Drag { None, Pan, Split, Mark };

    QSize pictureSize() const;
    double scale() const;     // logical pixels per image pixel
    QRectF imageArea() const; // in view coordinates; may exceed the view
    void paintPicture(QPainter &painter, bool before, const QRectF &clip) const;
    void paintMarks(QPainter &painter) const;
    double splitLine() const; // x in view coordinates
    QRectF markArea(const conversion::PlacedMark &mark) const;
    const conversion::PlacedMark *markAt(const QPointF &point) const;
    void dropMark();
    void zoomAt(double zoom, const QPointF &point);

    std::shared_ptr<const PreviewImage> m_picture;
    QString m_message;
    Show m_show = Show::After;
    double m_zoom = 0.0;
    QPointF m_offset;     // offset of the image's centre from the view's
    double m_split = 0.5; // fraction of the image's width
    Drag m_drag = Drag::None;
    QPointF m_last; // last mouse position
    std::optional<conversion::PlacedMark> m_dragged;
    QPoint m_pressedAt; // its previous position, in output pixels
};
