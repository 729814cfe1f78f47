// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>
#include <QWidget>

namespace icons
{

// An image with the square that becomes the icon. Dragging inside the square moves it, dragging outside draws
// a new one, dragging a corner resizes it. Shift keeps the centre. Arrow keys move it (with Ctrl by ten
// pixels), plus and minus resize it.
class CropView : public QWidget
{
    Q_OBJECT

public:
    explicit CropView(QWidget *parent = nullptr);

    // A null image clears the view.
    void setPicture(const QImage &picture, const QRect &square);
    QRect square() const { return m_square; }
    void setSquare(const QRect &square);
    // Also called for key presses in other widgets of the window.
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
    int cornerAt(QPointF position) const; // 0 to 3, or -1 for none
    void dragTo(QPoint to);

    QImage m_picture;
    QImage m_scaled; // scaled for the screen
    QRect m_square;  // in image pixels
    QRectF m_frame;  // area that is shown: image and square
    double m_scale = 1;
    QRect m_visible; // image and square together, in image pixels
    Drag m_drag = Drag::None;
    QPoint m_anchor; // where a drag began, or the fixed corner
    QPoint m_last;
    QRect m_before; // the square at the start of the drag
    bool m_centreKept = false;
};

} // namespace icons
