// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/CompareView.h"

#include "widgets/Theme.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double zoomStep = 1.25;
constexpr double wheelNotch = 120;
constexpr int minSide = 100;
constexpr double moveStep = 40; // by an arrow key

} // namespace

CompareView::CompareView(QWidget *parent) : QWidget(parent)
{
    setMinimumSize(2 * minSide, minSide);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Comparison of two pictures"));
}

void CompareView::showMessage(const QString &text)
{
    m_pair = {};
    m_message = text;
    update();
}

void CompareView::showPair(const PicturePair &pair)
{
    m_pair = pair;
    m_message.clear();
    update();
}

void CompareView::setDifference(bool difference)
{
    m_difference = difference;
    update();
}

void CompareView::setZoom(double zoom)
{
    zoomAt(zoom, {});
}

double CompareView::actualSizeZoom() const
{
    const QList<Pane> shown = panes();
    if (m_pair.first.full.isNull() || shown.isEmpty())
        return 1;
    const QSizeF fit =
        QSizeF(m_pair.first.full.size()).scaled(QSizeF(shown.first().area.size()), Qt::KeepAspectRatio);
    return m_pair.first.full.width() / devicePixelRatioF() / fit.width();
}

QList<CompareView::Pane> CompareView::panes() const
{
    const auto absent = [](const LoadedPicture &picture) {
        return picture.inCloud ? tr("This picture lies in a cloud store, and is not fetched to be looked at.")
                               : tr("This picture cannot be read any more.");
    };
    if (m_difference && !m_pair.difference.picture.isNull())
        return {{&m_pair.difference.picture, &m_pair.difference.picture, rect(), {}}};
    const Pane first{&m_pair.first.full, &m_pair.first.fitted, rect(), absent(m_pair.first)};
    if (m_pair.second.path.isEmpty())
        return {first};
    const int half = (width() - theme::spaceSnug) / 2;
    const QRect left(0, 0, half, height());
    const QRect right(width() - half, 0, half, height());
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    Pane one = first;
    one.area = mirrored ? right : left;
    return {one,
            {&m_pair.second.full, &m_pair.second.fitted, mirrored ? left : right, absent(m_pair.second)}};
}

QRectF CompareView::place(const QSize &picture, const QRect &area) const
{
    const QSizeF size = QSizeF(picture).scaled(QSizeF(area.size()), Qt::KeepAspectRatio) * m_zoom;
    const QPointF middle = QRectF(area).center();
    return {middle.x() - m_center.x() * size.width(), middle.y() - m_center.y() * size.height(), size.width(),
            size.height()};
}

void CompareView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (m_message.isEmpty() && !m_pair.first.path.isEmpty()) {
        for (const Pane &pane : panes())
            paintPane(painter, pane);
    } else {
        painter.setPen(theme::colors(this).textMuted);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, m_message);
    }
    if (hasFocus())
        theme::paintFocusRing(painter, rect(), theme::colors(this), theme::controlRadius);
}

void CompareView::paintPane(QPainter &painter, const Pane &pane) const
{
    const theme::Colors colors = theme::colors(this);
    painter.save();
    painter.setClipRect(pane.area);
    painter.fillRect(pane.area, theme::mix(colors.window, colors.text, 0.06));
    if (pane.full->isNull()) {
        painter.setPen(colors.textMuted);
        painter.drawText(pane.area, Qt::AlignCenter | Qt::TextWordWrap, pane.absent);
        painter.restore();
        return;
    }
    const QRectF whole = place(pane.full->size(), pane.area);
    const QRectF shown = whole.intersected(pane.area);
    // Uses the smaller image as long as it has enough pixels: it was scaled down smoothly.
    const bool enough = whole.width() * devicePixelRatioF() <= pane.fitted->width() * 1.01;
    const QImage &image = enough ? *pane.fitted : *pane.full;
    const double scale = image.width() / whole.width();
    const double scaleDown = image.height() / whole.height();
    const QRectF part((shown.left() - whole.left()) * scale, (shown.top() - whole.top()) * scaleDown,
                      shown.width() * scale, shown.height() * scaleDown);
    painter.drawImage(shown, image, part);
    painter.restore();
}

// Without a point, the centre is kept.
void CompareView::zoomAt(double zoom, const QPointF &point)
{
    zoom = std::clamp(zoom, 1.0, maxZoom);
    const QList<Pane> shown = panes();
    if (!point.isNull() && !m_pair.first.full.isNull()) {
        auto under = std::find_if(shown.cbegin(), shown.cend(),
                                  [&](const Pane &pane) { return pane.area.contains(point.toPoint()); });
        if (under != shown.cend() && !under->full->isNull()) {
            // Keeps the part of the image under the mouse at its position.
            const QRectF whole = place(under->full->size(), under->area);
            const QPointF from = point - QRectF(under->area).center();
            const double change = 1 / m_zoom - 1 / zoom;
            m_center += QPointF(from.x() * change * m_zoom / whole.width(),
                                from.y() * change * m_zoom / whole.height());
        }
    }
    m_zoom = zoom;
    keepInside();
    update();
    emit zoomChanged();
}

void CompareView::moveBy(const QPointF &pixels)
{
    if (m_pair.first.full.isNull())
        return;
    const QRectF whole = place(m_pair.first.full.size(), panes().first().area);
    m_center -= QPointF(pixels.x() / whole.width(), pixels.y() / whole.height());
    keepInside();
    update();
}

void CompareView::keepInside()
{
    const double margin = 0.5 / m_zoom;
    m_center.setX(std::clamp(m_center.x(), margin, 1 - margin));
    m_center.setY(std::clamp(m_center.y(), margin, 1 - margin));
}

void CompareView::wheelEvent(QWheelEvent *event)
{
    zoomAt(m_zoom * std::pow(zoomStep, event->angleDelta().y() / wheelNotch), event->position());
    event->accept();
}

void CompareView::mousePressEvent(QMouseEvent *event)
{
    m_dragging = event->button() == Qt::LeftButton;
    m_dragFrom = event->position();
    if (m_dragging && m_zoom > 1)
        setCursor(Qt::ClosedHandCursor);
}

void CompareView::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging)
        return;
    moveBy(event->position() - m_dragFrom);
    m_dragFrom = event->position();
}

void CompareView::mouseReleaseEvent(QMouseEvent *)
{
    m_dragging = false;
    unsetCursor();
}

void CompareView::mouseDoubleClickEvent(QMouseEvent *event)
{
    zoomAt(m_zoom > 1 ? 1 : std::max(actualSizeZoom(), 2.0), event->position());
}

void CompareView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        moveBy({moveStep, 0});
        break;
    case Qt::Key_Right:
        moveBy({-moveStep, 0});
        break;
    case Qt::Key_Up:
        moveBy({0, moveStep});
        break;
    case Qt::Key_Down:
        moveBy({0, -moveStep});
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}
