// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>
#include <QWidget>

// A picture with the square that becomes the icon. Dragging inside the square moves it, outside draws a new
// one; a corner resizes it. While Shift is down the square keeps its centre. Arrow keys move it (with Ctrl by
// ten pixels), plus and minus resize it.
class CropView : public QWidget
{
    Q_OBJECT

public:
    explicit CropView(QWidget *parent = nullptr);

    // A null image empties the view.
    void setPicture(const QImage &picture, const QRect &square);
    QRect square() const { return m_square; }
    void setSquare(const QRect &square);
    // Also with a key press that went to another widget of the window.
    void setCentreKept(bool kept);

    QSize sizeHint() const override { return {360, 300}; }
    QSize minimumSizeHint() const override { return {160, 140}; }

signals:
    void squareChanged(const QRect &square);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    enum class Drag { None, Move, Draw, Resize };

    void change(const QRect &square);
    void layOut();
    QRectF shown(const QRect &square) const;
    QPoint onPicture(QPointF position) const;
    int cornerAt(QPointF position) const; // 0 to 3, or -1
    void dragTo(QPoint to);

    QImage m_picture;
    QImage m_scaled; // for the screen
    QRect m_square;  // in pixels of the picture
    QRectF m_frame;  // of what is shown: picture and square
    double m_scale = 1;
    QRect m_visible; // picture and square together, in pixels of the picture
    Drag m_drag = Drag::None;
    QPoint m_anchor; // where a drag began, or the corner that stays
    QPoint m_last;
    QRect m_before; // the square when the drag began
    bool m_centreKept = false;
};
