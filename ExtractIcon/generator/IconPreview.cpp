// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/generator/IconPreview.h"

#include "widgets/Theme.h"

#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <functional>

namespace
{

constexpr int leastColumn = 90;
// The backgrounds of Windows' lists and taskbar in light and dark mode.
constexpr QRgb light = 0xfff3f3f3;
constexpr QRgb dark = 0xff202020;

} // namespace

IconPreview::IconPreview(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("previewWidget"));
    setAccessibleName(tr("Preview of each size on light and dark"));
}

void IconPreview::setImages(const QList<QImage> &images)
{
    m_images = images;
    std::ranges::sort(m_images, std::greater(), &QImage::width);
    QStringList sizes;
    for (const QImage &image : std::as_const(m_images))
        sizes.append(QString::number(image.width()));
    setAccessibleDescription(sizes.join(QStringLiteral(", ")));
    layOut();
}

// Maps one image pixel to one screen pixel, unless half of the widget is too narrow.
QSizeF IconPreview::shownSize(const QImage &image) const
{
    const QSizeF size = QSizeF(image.size()) / devicePixelRatioF();
    const double room = width() / 2 - 2 * theme::spaceSnug;
    return size * std::min(1.0, room / size.width());
}

void IconPreview::layOut()
{
    const int caption = QFontMetrics(theme::caption(font())).height() + theme::spaceTight;
    double height = theme::space;
    for (const QImage &image : std::as_const(m_images))
        height += shownSize(image).height() + caption + theme::spaceSnug;
    setMinimumSize(2 * leastColumn, static_cast<int>(height));
    update();
}

void IconPreview::resizeEvent(QResizeEvent *)
{
    layOut();
}

void IconPreview::paintEvent(QPaintEvent *)
{
    if (m_images.isEmpty())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QFont caption = theme::caption(font());
    const int line = QFontMetrics(caption).height();
    painter.setFont(caption);
    const int half = width() / 2;
    painter.fillRect(QRect(0, 0, half, height()), QColor::fromRgb(light));
    painter.fillRect(QRect(half, 0, width() - half, height()), QColor::fromRgb(dark));
    double y = theme::space;
    for (const QImage &image : std::as_const(m_images)) {
        const QSizeF size = shownSize(image);
        const QString text = QStringLiteral("%1x%1").arg(image.width());
        for (const int left : {0, half}) {
            painter.drawImage(QRectF(QPointF(left + std::floor((half - size.width()) / 2), y), size), image);
            painter.setPen(left == 0 ? QColor(80, 80, 80) : QColor(190, 190, 190));
            painter.drawText(QRectF(left, y + size.height() + theme::spaceTight, half, line),
                             Qt::AlignHCenter, text);
        }
        y += size.height() + theme::spaceTight + line + theme::spaceSnug;
    }
}
