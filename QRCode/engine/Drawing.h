// SPDX-License-Identifier: GPL-3.0-or-later
// Draws a code: on the screen, as an image, and in the two vector formats. Any thread.
#pragma once

#include "QRCode/engine/Style.h"

#include <QByteArray>
#include <QPainterPath>

#include <vector>

class QPainter;

namespace qr
{

class Drawing
{
public:
    Drawing(const core::QrMatrix &matrix, const Style &style);

    const Style &style() const { return m_style; }
    const core::QrMatrix &matrix() const { return m_matrix; }
    // Modules per side including the margin; also the minimum image size in pixels.
    int side() const { return m_matrix.size() + 2 * m_style.margin; }
    // For an image of that size: a whole number, so that all modules are equal; the remainder widens the
    // margin.
    int pixelsPerModule(int pixels) const { return pixels / side(); }

    // Null if a module would be smaller than a pixel. Without an alpha channel unless the background is
    // transparent: it would be useless, and slow on the clipboard.
    QImage image(int pixels) const;
    QImage image() const { return image(m_style.imageSize); }
    // Fills the square with the code and its background.
    void paint(QPainter &painter, const QRectF &square) const;

    QByteArray svg() const;
    // One page of 100 x 100 mm; empty if the writer fails.
    QByteArray pdf() const;

private:
    void paintModules(QPainter &painter) const;
    QBrush brush() const;
    QColor logoBackColor() const { return m_style.transparent ? QColor(Qt::white) : m_style.background; }
    QString svgPaint(QString &definitions) const;
    QString svgLogo() const;

    core::QrMatrix m_matrix;
    Style m_style;
    QRectF m_logo; // in modules from the code's corner, without the margin; empty without a logo
    QPainterPath m_logoBack;
    std::vector<QPainterPath> m_outline;
};

} // namespace qr
