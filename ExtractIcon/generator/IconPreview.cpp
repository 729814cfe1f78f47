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
// The backgrounds of Windows' own lists and task bar in its light and dark mode.
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

void IconPreview::layOut()
{
    const double ratio = devicePixelRatioF();
    const int caption = QFontMetrics(theme::caption(font())).height() + theme::spaceTight;
    double widest = 0;
    double height = theme::space;
    for (const QImage &image : std::as_const(m_images)) {
        widest = std::max(widest, image.width() / ratio);
        height += image.height() / ratio + caption + theme::spaceSnug;
    }
    m_column = std::max(leastColumn, static_cast<int>(widest) + 2 * theme::spaceSnug);
    setMinimumSize(2 * m_column, static_cast<int>(height));
    update();
}

void IconPreview::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const double ratio = devicePixelRatioF();
    const QFont caption = theme::caption(font());
    const int line = QFontMetrics(caption).height();
    painter.setFont(caption);
    const int half = width() / 2;
    painter.fillRect(QRect(0, 0, half, height()), QColor::fromRgb(light));
    painter.fillRect(QRect(half, 0, width() - half, height()), QColor::fromRgb(dark));
    double y = theme::space;
    for (const QImage &image : std::as_const(m_images)) {
        const QSizeF size = QSizeF(image.size()) / ratio;
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
