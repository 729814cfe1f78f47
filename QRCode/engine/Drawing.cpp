// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/engine/Drawing.h"

#include "QRCode/engine/Outline.h"

#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

namespace qr
{

namespace
{

QRectF logoArea(const core::QrMatrix &matrix, const Logo &logo)
{
    if (logo.image.isNull())
        return {};
    const double longest = matrix.size() * logo.size / 100.0;
    const QSizeF size = QSizeF(logo.image.size()).scaled(longest, longest, Qt::KeepAspectRatio);
    const double middle = matrix.size() / 2.0;
    return {middle - size.width() / 2, middle - size.height() / 2, size.width(), size.height()};
}

QPainterPath logoBack(const QRectF &logo, const Style &style)
{
    QPainterPath path;
    if (logo.isEmpty() || !style.logo.back)
        return path;
    const double beyond = qMax(logo.width(), logo.height()) * style.logo.backSize / 100.0;
    const QRectF area = logo.adjusted(-beyond, -beyond, beyond, beyond);
    switch (style.logo.backShape) {
    case BackShape::Square:
        path.addRect(area);
        break;
    case BackShape::Rounded: {
        const double radius = qMin(area.width(), area.height()) * 0.2;
        path.addRoundedRect(area, radius, radius);
        break;
    }
    case BackShape::Circle: {
        const double radius = qMax(area.width(), area.height()) / 2;
        path.addEllipse(area.center(), radius, radius);
        break;
    }
    }
    return path;
}

} // namespace

Drawing::Drawing(const core::QrMatrix &matrix, const Style &style)
    : m_matrix(matrix),
      m_style(style),
      m_logo(logoArea(matrix, style.logo)),
      m_logoBack(logoBack(m_logo, style)),
      m_outline(outline(matrix, style, m_logoBack))
{
}

QBrush Drawing::brush() const
{
    const double side = m_matrix.size();
    const auto gradient = [this](QGradient &&blend) {
        blend.setColorAt(0, m_style.color);
        blend.setColorAt(1, m_style.color2);
        return QBrush(blend);
    };
    switch (m_style.fill) {
    case Fill::Solid:
        break;
    case Fill::Horizontal:
        return gradient(QLinearGradient(0, 0, side, 0));
    case Fill::Vertical:
        return gradient(QLinearGradient(0, 0, 0, side));
    case Fill::Diagonal:
        return gradient(QLinearGradient(0, 0, side, side));
    case Fill::Radial:
        return gradient(QRadialGradient(side / 2, side / 2, side / 2));
    }
    return m_style.color;
}

void Drawing::paintModules(QPainter &painter) const
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QBrush ink = brush();
    for (const QPainterPath &piece : m_outline)
        painter.fillPath(piece, ink);
    if (m_logo.isEmpty())
        return;
    if (!m_logoBack.isEmpty() && !m_style.transparent)
        painter.fillPath(m_logoBack, logoBackColor());
    painter.drawImage(m_logo, m_style.logo.image);
}

void Drawing::paint(QPainter &painter, const QRectF &square) const
{
    painter.save();
    if (!m_style.transparent)
        painter.fillRect(square, m_style.background);
    const double scale = square.width() / side();
    painter.translate(square.topLeft());
    painter.scale(scale, scale);
    painter.translate(m_style.margin, m_style.margin);
    paintModules(painter);
    painter.restore();
}

QImage Drawing::image(int pixels) const
{
    const int scale = pixelsPerModule(pixels);
    if (scale < 1)
        return {};
    QImage image(pixels, pixels,
                 m_style.transparent ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.fill(m_style.transparent ? QColor(Qt::transparent) : m_style.background);
    const int inset = (pixels - scale * m_matrix.size()) / 2;
    QPainter painter(&image);
    painter.translate(inset, inset);
    painter.scale(scale, scale);
    paintModules(painter);
    return image;
}

QByteArray Drawing::pdf() const
{
    constexpr double pageSide = 100; // mm
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setPageSize(QPageSize(QSizeF(pageSide, pageSide), QPageSize::Millimeter));
        writer.setPageMargins({});
        writer.setResolution(1200);
        QPainter painter;
        if (!painter.begin(&writer))
            return {};
        paint(painter, QRectF(0, 0, writer.width(), writer.height()));
    }
    return buffer.data();
}

} // namespace qr
