// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/generator/CropView.h"

#include "ExtractIcon/engine/CropSquare.h"
#include "ExtractIcon/generator/Checkerboard.h"
#include "widgets/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace icons
{

namespace
{

constexpr double handle = 5; // half the side of a corner's square
constexpr double reach = 10; // mouse distance from a corner

} // namespace

CropView::CropView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("cropView"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAccessibleName(tr("Part of the picture"));
    setToolTip(tr("Drag the square to move it, a corner to resize it, or draw a new one. Hold Shift to keep "
                  "its centre."));
}

void CropView::setPicture(const QImage &picture, const QRect &square)
{
    m_picture = picture;
    m_square = square;
    m_drag = Drag::None;
    m_scaled = {};
    layOut();
}

void CropView::setSquare(const QRect &square)
{
    m_square = square;
    layOut();
}

void CropView::setCentreKept(bool kept)
{
    m_centreKept = kept;
    if (m_drag == Drag::Draw || m_drag == Drag::Resize)
        dragTo(m_last);
}

void CropView::layOut()
{
    setAccessibleDescription(tr("%1 pixels from the left, %2 from the top, %3 wide")
                                 .arg(m_square.x())
                                 .arg(m_square.y())
                                 .arg(m_square.width()));
    m_visible = m_picture.rect() | m_square;
    const QSizeF room = QSizeF(size()) - QSizeF(2 * reach, 2 * reach);
    if (m_picture.isNull() || room.isEmpty()) {
        update();
        return;
    }
    m_scale = std::min({room.width() / m_visible.width(), room.height() / m_visible.height(), 8.0});
    const QSizeF size(m_visible.width() * m_scale, m_visible.height() * m_scale);
    m_frame = QRectF(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size);
    const QSize wanted =
        (QSizeF(m_picture.size()) * m_scale * devicePixelRatioF()).toSize().expandedTo({1, 1});
    if (m_scaled.size() != wanted)
        m_scaled = m_picture.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    update();
}

QRectF CropView::shown(const QRect &square) const
{
    return {m_frame.topLeft() + QPointF(square.topLeft() - m_visible.topLeft()) * m_scale,
            QSizeF(square.size()) * m_scale};
}

QPoint CropView::onPicture(QPointF position) const
{
    return ((position - m_frame.topLeft()) / m_scale).toPoint() + m_visible.topLeft();
}

int CropView::cornerAt(QPointF position) const
{
    const QRectF square = shown(m_square);
    const QPointF corners[] = {square.topLeft(), square.topRight(), square.bottomRight(),
                               square.bottomLeft()};
    for (int i = 0; i < 4; ++i) {
        if (std::abs(corners[i].x() - position.x()) <= reach &&
            std::abs(corners[i].y() - position.y()) <= reach)
            return i;
    }
    return -1;
}

void CropView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const theme::Colors colors = theme::colors(this);
    theme::paintCard(painter, QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), colors);
    if (m_picture.isNull()) {
        painter.setPen(colors.textMuted);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, tr("Add a picture, or drop one here."));
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF picture = shown(m_picture.rect());
    paintCheckerboard(painter, picture, theme::isDark(palette()));
    painter.drawImage(picture, m_scaled);
    const QRectF square = shown(m_square);
    QPainterPath outside;
    outside.addRect(m_frame | picture);
    QPainterPath inside;
    inside.addRect(square);
    painter.fillPath(outside - inside, QColor(0, 0, 0, 110));
    // Two lines in different colours, so that one is visible on any image.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 3));
    painter.drawRect(square);
    painter.setPen(QPen(Qt::white, 1));
    painter.drawRect(square);
    painter.setBrush(hasFocus() ? colors.accent : QColor(Qt::white));
    painter.setPen(Qt::black);
    for (const QPointF &corner :
         {square.topLeft(), square.topRight(), square.bottomLeft(), square.bottomRight()})
        painter.drawRect(QRectF(corner - QPointF(handle, handle), QSizeF(2 * handle, 2 * handle)));
}

void CropView::resizeEvent(QResizeEvent *)
{
    layOut();
}

void CropView::mousePressEvent(QMouseEvent *event)
{
    if (m_picture.isNull() || event->button() != Qt::LeftButton)
        return;
    m_before = m_square;
    m_last = m_anchor = onPicture(event->position());
    const int corner = cornerAt(event->position());
    if (corner >= 0) {
        const QRect s = m_square;
        const QPoint opposite[] = {s.topLeft() + QPoint(s.width(), s.height()),
                                   s.topLeft() + QPoint(0, s.height()), s.topLeft(),
                                   s.topLeft() + QPoint(s.width(), 0)};
        m_anchor = opposite[corner];
        m_drag = Drag::Resize;
    } else {
        m_drag = m_square.contains(m_anchor) ? Drag::Move : Drag::Draw;
    }
}

void CropView::mouseMoveEvent(QMouseEvent *event)
{
    if (m_drag == Drag::None) {
        const int corner = m_picture.isNull() ? -1 : cornerAt(event->position());
        if (corner >= 0)
            setCursor(corner % 2 == 0 ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor);
        else
            setCursor(m_square.contains(onPicture(event->position())) ? Qt::SizeAllCursor : Qt::CrossCursor);
        return;
    }
    m_centreKept = (event->modifiers() & Qt::ShiftModifier) != 0;
    dragTo(onPicture(event->position()));
}

void CropView::dragTo(QPoint to)
{
    m_last = to;
    if (m_drag == Drag::Move) {
        change(movedSquare(m_before, to - m_anchor, m_picture.size()));
        return;
    }
    const QPoint centre = m_before.topLeft() + QPoint(m_before.width() / 2, m_before.height() / 2);
    const bool resizes = m_drag == Drag::Resize;
    const QPoint anchor = m_centreKept && resizes ? centre : m_anchor;
    change(drawnSquare(anchor, to, m_picture.size(), m_centreKept));
}

void CropView::mouseReleaseEvent(QMouseEvent *)
{
    m_drag = Drag::None;
}

void CropView::keyPressEvent(QKeyEvent *event)
{
    const int step = (event->modifiers() & Qt::ControlModifier) != 0 ? 10 : 1;
    QPoint by;
    int larger = 0;
    switch (event->key()) {
    case Qt::Key_Left:
        by = {-step, 0};
        break;
    case Qt::Key_Right:
        by = {step, 0};
        break;
    case Qt::Key_Up:
        by = {0, -step};
        break;
    case Qt::Key_Down:
        by = {0, step};
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        larger = step;
        break;
    case Qt::Key_Minus:
        larger = -step;
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    if (m_picture.isNull())
        return;
    if (larger == 0) {
        change(movedSquare(m_square, by, m_picture.size()));
        return;
    }
    const QPoint centre = m_square.topLeft() + QPoint(m_square.width() / 2, m_square.height() / 2);
    change(drawnSquare(centre, centre + QPoint(m_square.width() / 2 + larger, 0), m_picture.size(), true));
}

void CropView::change(const QRect &square)
{
    if (square == m_square || square.isEmpty())
        return;
    m_square = square;
    layOut();
    emit squareChanged(square);
}

} // namespace icons
