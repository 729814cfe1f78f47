// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/preview/PreviewView.h"

#include "widgets/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr double zoomStep = 1.25;
constexpr double splitReach = 6.0; // mouse distance from the line

void paintChessboard(QPainter &painter, const QRectF &area)
{
    constexpr int side = 8;
    painter.fillRect(area, QColor(0xff, 0xff, 0xff));
    painter.fillRect(area, QBrush([] {
                         QPixmap tile(2 * side, 2 * side);
                         tile.fill(QColor(0xff, 0xff, 0xff));
                         QPainter squares(&tile);
                         squares.fillRect(0, 0, side, side, QColor(0xe0, 0xe0, 0xe0));
                         squares.fillRect(side, side, side, side, QColor(0xe0, 0xe0, 0xe0));
                         return tile;
                     }()));
}

} // namespace

PreviewView::PreviewView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("previewView"));
    setAccessibleName(tr("Preview"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PreviewView::setPicture(const std::shared_ptr<const PreviewImage> &picture)
{
    const bool other = !m_picture || m_picture->path != picture->path;
    m_picture = picture;
    m_message = picture->problem;
    if (other) {
        m_zoom = 0.0;
        m_offset = {};
        emit zoomChanged();
    }
    update();
}

void PreviewView::setMessage(const QString &message)
{
    m_picture.reset();
    m_message = message;
    update();
}

void PreviewView::setShow(Show show)
{
    m_show = show;
    update();
}

void PreviewView::setZoom(double zoom)
{
    m_zoom = zoom <= 0.0 ? 0.0 : std::clamp(zoom, 0.02, maxZoom);
    if (m_zoom == 0.0)
        m_offset = {};
    update();
    emit zoomChanged();
}

void PreviewView::zoomIn()
{
    setZoom(scale() * devicePixelRatioF() * zoomStep);
}

void PreviewView::zoomOut()
{
    setZoom(scale() * devicePixelRatioF() / zoomStep);
}

QString PreviewView::zoomText() const
{
    if (pictureSize().isEmpty())
        return {};
    return tr("%1 %").arg(QString::number(std::lround(scale() * devicePixelRatioF() * 100)));
}

// Both states are shown at the output size, so that they overlap exactly.
QSize PreviewView::pictureSize() const
{
    return m_picture ? m_picture->after.size() : QSize();
}

double PreviewView::scale() const
{
    if (m_zoom > 0.0)
        return m_zoom / devicePixelRatioF();
    const QSizeF size = pictureSize();
    if (size.isEmpty())
        return 1.0;
    // Never enlarged.
    return std::min({width() / size.width(), height() / size.height(), 1.0 / devicePixelRatioF()});
}

QRectF PreviewView::imageArea() const
{
    QRectF area({}, QSizeF(pictureSize()) * scale());
    area.moveCenter(QRectF(rect()).center() + m_offset);
    return area;
}

void PreviewView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const theme::Colors colors = theme::colors(this);
    painter.fillRect(rect(), theme::mix(colors.window, colors.text, 0.06));
    if (pictureSize().isEmpty()) {
        painter.setPen(colors.textMuted);
        painter.drawText(rect().adjusted(theme::space, 0, -theme::space, 0),
                         Qt::AlignCenter | Qt::TextWordWrap, m_message);
        return;
    }
    const QRectF visible = imageArea().intersected(rect());
    paintChessboard(painter, visible);
    if (m_show == Show::Split) {
        const double line = splitLine();
        QRectF left = visible;
        left.setRight(line);
        QRectF right = visible;
        right.setLeft(line);
        paintPicture(painter, true, left);
        paintPicture(painter, false, right);
        painter.fillRect(QRectF(line - 1, visible.top(), 2, visible.height()), colors.accent);
    } else {
        paintPicture(painter, m_show == Show::Before, visible);
    }
    paintMarks(painter);
    if (hasFocus())
        theme::paintFocusRing(painter, QRectF(rect()).adjusted(1, 1, -1, -1), colors, theme::controlRadius);
}

void PreviewView::paintPicture(QPainter &painter, bool before, const QRectF &clip) const
{
    if (clip.isEmpty())
        return;
    const QImage &whole = before ? m_picture->before : m_picture->after;
    const QImage &small = before ? m_picture->beforeFitted : m_picture->afterFitted;
    const QRectF area = imageArea();
    const bool useSmall = !small.isNull() && area.width() * devicePixelRatioF() <= small.width() * 1.2;
    const QImage &image = useSmall ? small : whole;
    // Scales only the visible part.
    const double stretchX = image.width() / area.width();
    const double stretchY = image.height() / area.height();
    const QRectF source((clip.left() - area.left()) * stretchX, (clip.top() - area.top()) * stretchY,
                        clip.width() * stretchX, clip.height() * stretchY);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, stretchX / devicePixelRatioF() > 0.5);
    painter.drawImage(clip, image, source);
}

void PreviewView::paintMarks(QPainter &painter) const
{
    if (!m_dragged)
        return;
    painter.setPen(QPen(theme::colors(this).accent, 2, Qt::DashLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(markArea(*m_dragged));
}

double PreviewView::splitLine() const
{
    const QRectF area = imageArea();
    return std::clamp(area.left() + area.width() * m_split, area.left(), area.right());
}

QRectF PreviewView::markArea(const conversion::PlacedMark &mark) const
{
    const double factor = scale();
    return QRectF(imageArea().topLeft() + QPointF(mark.place.topLeft()) * factor,
                  QSizeF(mark.place.size()) * factor);
}

// The topmost mark at the point.
const conversion::PlacedMark *PreviewView::markAt(const QPointF &point) const
{
    if (!m_picture || m_show == Show::Before)
        return nullptr;
    for (auto mark = m_picture->marks.rbegin(); mark != m_picture->marks.rend(); ++mark) {
        if (markArea(*mark).contains(point))
            return &*mark;
    }
    return nullptr;
}

void PreviewView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || pictureSize().isEmpty())
        return;
    m_last = event->position();
    if (m_show == Show::Split && std::abs(m_last.x() - splitLine()) < splitReach) {
        m_drag = Drag::Split;
    } else if (const auto *mark = markAt(m_last)) {
        m_drag = Drag::Mark;
        m_dragged = *mark;
        m_pressedAt = mark->place.topLeft();
    } else {
        m_drag = Drag::Pan;
    }
}

void PreviewView::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF moved = event->position() - m_last;
    switch (m_drag) {
    case Drag::None:
        if (m_show == Show::Split && std::abs(event->position().x() - splitLine()) < splitReach)
            setCursor(Qt::SplitHCursor);
        else if (markAt(event->position()))
            setCursor(Qt::SizeAllCursor);
        else
            unsetCursor();
        return;
    case Drag::Pan:
        if (m_zoom > 0.0)
            m_offset += moved;
        break;
    case Drag::Split:
        m_split = std::clamp((event->position().x() - imageArea().left()) / imageArea().width(), 0.0, 1.0);
        break;
    case Drag::Mark: {
        const QPoint pixels = (moved / scale()).toPoint();
        m_dragged->place.translate(pixels);
        m_last += QPointF(pixels) * scale();
        update();
        return;
    }
    }
    m_last = event->position();
    update();
}

void PreviewView::mouseReleaseEvent(QMouseEvent *)
{
    if (m_drag == Drag::Mark &&
        m_dragged->place.topLeft() != m_pressedAt) // a click without movement changes nothing
        dropMark();
    m_drag = Drag::None;
    m_dragged.reset();
    update();
}

// The new position is the third of the image that contains the centre of the mark.
void PreviewView::dropMark()
{
    const QSize size = pictureSize();
    const QRect place = m_dragged->place;
    const auto third = [](int middle, int side) { return std::clamp(middle * 3 / std::max(side, 1), 0, 2); };
    const int column = third(place.center().x(), size.width());
    const int row = third(place.center().y(), size.height());
    const std::array<int, 3> fromX{place.left(), 0, size.width() - place.right() - 1};
    const std::array<int, 3> fromY{place.top(), 0, size.height() - place.bottom() - 1};
    const int x = std::max(0, fromX[static_cast<std::size_t>(column)]);
    const int y = std::max(0, fromY[static_cast<std::size_t>(row)]);
    // One margin applies to both edges of a corner: use the smaller distance.
    const int margin = column == 1 ? y : row == 1 ? x : std::min(x, y);
    emit markPlaced(m_dragged->kind, static_cast<conversion::Position>(row * 3 + column), margin);
}

void PreviewView::zoomAt(double zoom, const QPointF &point)
{
    const QPointF inImage = (point - imageArea().center()) / scale();
    setZoom(zoom);
    m_offset = point - QRectF(rect()).center() - inImage * scale();
    update();
}

void PreviewView::wheelEvent(QWheelEvent *event)
{
    if (pictureSize().isEmpty() || event->angleDelta().y() == 0)
        return;
    const double steps = event->angleDelta().y() / 120.0;
    zoomAt(scale() * devicePixelRatioF() * std::pow(zoomStep, steps), event->position());
    event->accept();
}

void PreviewView::keyPressEvent(QKeyEvent *event)
{
    constexpr int step = 40;
    switch (event->key()) {
    case Qt::Key_Plus:
        return zoomIn();
    case Qt::Key_Minus:
        return zoomOut();
    case Qt::Key_0:
        return setZoom(0.0);
    case Qt::Key_1:
        return setZoom(1.0);
    case Qt::Key_Left:
        m_offset.rx() += step;
        break;
    case Qt::Key_Right:
        m_offset.rx() -= step;
        break;
    case Qt::Key_Up:
        m_offset.ry() += step;
        break;
    case Qt::Key_Down:
        m_offset.ry() -= step;
        break;
    default:
        return QWidget::keyPressEvent(event);
    }
    update();
}

void PreviewView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    emit resized();
    emit zoomChanged();
}
