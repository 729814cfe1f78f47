// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/IconSizesView.h"

#include "widgets/Theme.h"

#include <QEvent>
#include <QPainter>
#include <QStringList>

#include <algorithm>

namespace
{

constexpr int leastWidth = 180;
constexpr int damagedSide = 32; // size of the placeholder for an image that cannot be decoded

} // namespace

IconSizesView::IconSizesView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("sizesView"));
    setAccessibleName(tr("Sizes of the selected icon"));
}

void IconSizesView::setImages(QList<icons::IconImage> images)
{
    std::ranges::stable_sort(images, [](const icons::IconImage &left, const icons::IconImage &right) {
        return left.facts.width != right.facts.width ? left.facts.width > right.facts.width
                                                     : left.facts.depth > right.facts.depth;
    });
    m_images = std::move(images);
    QStringList texts;
    for (const icons::IconImage &image : m_images)
        texts.append(icons::sizeAndDepth(image.facts));
    setAccessibleDescription(texts.join(QStringLiteral("; ")));
    layOut();
}

// Maps one image pixel to one screen pixel.
QSize IconSizesView::shownSize(const icons::IconImage &image) const
{
    if (image.image.isNull())
        return {damagedSide, damagedSide};
    return (QSizeF(image.image.size()) / devicePixelRatioF()).toSize().expandedTo(QSize(1, 1));
}

void IconSizesView::layOut()
{
    const int caption = QFontMetrics(theme::caption(font())).height();
    int width = leastWidth;
    for (const icons::IconImage &image : std::as_const(m_images))
        width = std::max(width, shownSize(image).width() + 2 * theme::space);
    m_places.clear();
    int y = theme::space;
    for (const icons::IconImage &image : std::as_const(m_images)) {
        const QSize size = shownSize(image);
        m_places.append(QRect(QPoint((width - size.width()) / 2, y), size));
        y += size.height() + theme::spaceTight + caption + theme::spaceWide;
    }
    m_size = QSize(width, y);
    setMinimumSize(m_size);
    updateGeometry();
    update();
}

QSize IconSizesView::sizeHint() const
{
    return m_size.expandedTo(QSize(leastWidth, 0));
}

void IconSizesView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const theme::Colors colors = theme::colors(this);
    const QFont caption = theme::caption(font());
    painter.setFont(caption);
    const int lineHeight = QFontMetrics(caption).height();
    const int shift = (width() - m_size.width()) / 2;
    for (qsizetype i = 0; i < m_images.size(); ++i) {
        const QRect place = m_places[i].translated(shift, 0);
        const icons::IconImage &image = m_images[i];
        if (image.image.isNull()) {
            painter.setPen(colors.controlBorder);
            painter.drawRect(place.adjusted(0, 0, -1, -1));
            painter.drawText(place, Qt::AlignCenter, QStringLiteral("?"));
        } else {
            painter.drawImage(place, image.image);
        }
        QString text = icons::sizeAndDepth(image.facts);
        if (image.facts.png)
            text += tr(", PNG");
        if (image.image.isNull())
            text += tr(" (damaged)");
        painter.setPen(colors.textMuted);
        painter.drawText(QRect(0, place.bottom() + theme::spaceTight, width(), lineHeight), Qt::AlignHCenter,
                         text);
    }
}

void IconSizesView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layOut();
}
