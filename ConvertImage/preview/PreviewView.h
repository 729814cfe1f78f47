// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/preview/PreviewRenderer.h"

#include <QWidget>

#include <memory>
#include <optional>

// Shows a rendered picture: fitted or at a zoom, after the steps or before them, or with both side by side
// along a line that the user moves. Marks are placed by dragging. Nothing is computed here but what is on the
// screen.
class PreviewView : public QWidget
{
    Q_OBJECT

public:
    enum class Show { After, Before, Split };
    static constexpr double maxZoom = 8.0;

    explicit PreviewView(QWidget *parent = nullptr);

    void setPicture(const std::shared_ptr<const PreviewPicture> &picture);
    // Instead of a picture.
    void setMessage(const QString &message);
    bool isEmpty() const { return !m_picture; }
    void setShow(Show show);
    Show shown() const { return m_show; }

    // 1 is a pixel of the picture for each of the screen; 0 fits the picture into the view.
    void setZoom(double zoom);
    void zoomIn();
    void zoomOut();
    QString zoomText() const; // "45 %"

    QSize sizeHint() const override { return {420, 320}; }
    QSize minimumSizeHint() const override { return {160, 120}; }

signals:
    void zoomChanged();
    // A mark was dropped: as far from the edges that the position names.
    void markPlaced(conversion::MarkKind kind, conversion::Position position, int margin);
    void resized(); // the view has another size: pictures fitted to it are too large or too small

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
    double scale() const;       // logical pixels of the view for a pixel of the picture
    QRectF pictureArea() const; // in the view; may reach beyond it
    void paintPicture(QPainter &painter, bool before, const QRectF &clip) const;
    void paintMarks(QPainter &painter) const;
    double splitLine() const; // x in the view
    QRectF markArea(const conversion::PlacedMark &mark) const;
    const conversion::PlacedMark *markAt(const QPointF &point) const;
    void dropMark();
    void zoomAt(double zoom, const QPointF &point);

    std::shared_ptr<const PreviewPicture> m_picture;
    QString m_message;
    Show m_show = Show::After;
    double m_zoom = 0.0;
    QPointF m_offset;     // of the picture's middle from the view's
    double m_split = 0.5; // of the picture's width
    Drag m_drag = Drag::None;
    QPointF m_last; // of the mouse
    std::optional<conversion::PlacedMark> m_dragged;
    QPoint m_pressedAt; // where it was before, in pixels of the output
};
