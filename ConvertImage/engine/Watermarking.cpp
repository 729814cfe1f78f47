// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Watermarking.h"

#include "ConvertImage/engine/ImageFormat.h"
#include "core/QrEncoder.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace conversion
{

namespace
{

constexpr int maxMarkSide = 32767; // nothing larger could be visible as a whole

// An image's stored resolution may be nonsense; those of screens and printers are well within this range.
int textPixels(int points, int dotsPerMeter)
{
    constexpr double inch = 0.0254;
    const double dotsPerInch = std::clamp(dotsPerMeter * inch, 30.0, 2400.0);
    return std::clamp(static_cast<int>(std::lround(points * dotsPerInch / 72.0)), 1, maxMarkSide / 8);
}

QImage textImage(const TextMark &mark, int dotsPerMeter, const QString &defaultFont)
{
    QFont font(mark.font.isEmpty() ? defaultFont : mark.font);
    font.setPixelSize(textPixels(mark.points, dotsPerMeter));
    // Uses the real extent of the glyphs: italics and accents exceed their advance.
    const QFontMetrics metrics(font);
    const QRect bounds = metrics.boundingRect(QRect(0, 0, maxMarkSide, maxMarkSide),
                                              Qt::AlignLeft | Qt::AlignTop, mark.content);
    const int slant = metrics.height() / 8;
    const QSize size = (bounds.size() + QSize(2 * slant, 0)).boundedTo(QSize(maxMarkSide, maxMarkSide / 4));
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::TextAntialiasing | QPainter::Antialiasing);
    painter.setFont(font);
    painter.setPen(mark.color);
    painter.drawText(image.rect().adjusted(slant, 0, 0, 0), Qt::AlignLeft | Qt::AlignTop, mark.content);
    return image;
}

PlacedMark placed(MarkKind kind, QImage image, const QSize &size, const QSize &canvas, Position position,
                  int margin, int opacity)
{
    return {kind, std::move(image), QRect(markCorner(canvas, size, position, margin), size),
            std::clamp(opacity, 0, 100)};
}

QSize percentOf(const QSize &size, int percent)
{
    const auto scaled = [percent](int side) {
        return static_cast<int>(std::clamp<qint64>(qint64(side) * percent / 100, 1, maxMarkSide));
    };
    return {scaled(size.width()), scaled(size.height())};
}

// Medium error correction, as the image may be scaled and printed.
std::optional<core::QrMatrix> markCode(const QString &text)
{
    return core::encodeQr(text, core::QrCorrection::Medium).matrix;
}

// A format that QPainter supports, with the same bits per channel. QPainter refuses some formats, and paints
// only grey into grey ones.
QImage::Format paintedFormat(const QImage &image)
{
    const bool alpha = image.hasAlphaChannel();
    if (isDeep(image))
        return alpha ? QImage::Format_RGBA64_Premultiplied : QImage::Format_RGBX64;
    return alpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
}

} // namespace

QPoint markCorner(const QSize &canvas, const QSize &mark, Position position, int margin)
{
    const auto along = [margin](int room, int part) {
        switch (part) {
        case 0:
            return margin;
        case 1:
            return room / 2;
        default:
            return room - margin;
        }
    };
    const int index = static_cast<int>(position);
    return {along(canvas.width() - mark.width(), index % 3),
            along(canvas.height() - mark.height(), index / 3)};
}

int qrModulePixels(const QString &text, int size)
{
    const auto code = markCode(text);
    return code ? std::max(1, size / (code->size() + 2 * core::qrQuietZone)) : 0;
}

QImage qrImage(const QString &text, int size)
{
    const auto code = markCode(text);
    if (!code)
        return {};
    const int modules = code->size() + 2 * core::qrQuietZone;
    QImage picture(modules, modules, QImage::Format_RGB32);
    for (int y = 0; y < modules; ++y) {
        for (int x = 0; x < modules; ++x) {
            const bool dark = code->isDark(x - core::qrQuietZone, y - core::qrQuietZone);
            picture.setPixel(x, y, dark ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
        }
    }
    const int pixels = modules * std::max(1, std::min(size, maxMarkSide) / modules);
    return picture.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

std::vector<PlacedMark> placedMarks(const QSize &canvas, int dotsPerMeter, const Watermarks &marks,
                                    const MarkSources &sources)
{
    std::vector<PlacedMark> placements;
    if (const TextMark &text = marks.text; !text.content.isEmpty()) {
        QImage image = textImage(text, dotsPerMeter, sources.defaultFont);
        const QSize size = image.size();
        placements.push_back(
            placed(MarkKind::Text, std::move(image), size, canvas, text.position, text.margin, text.opacity));
    }
    if (const ImageMark &picture = marks.picture; !picture.path.isEmpty() && !sources.picture.isNull()) {
        const QSize size = percentOf(sources.picture.size(), picture.percent);
        const QImage drawn = inSrgb(sources.picture).convertToFormat(QImage::Format_ARGB32_Premultiplied);
        placements.push_back(placed(MarkKind::Picture,
                                    drawn.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation), size,
                                    canvas, picture.position, picture.margin, picture.opacity));
    }
    if (const QrMark &qr = marks.qr; !qr.text.isEmpty()) {
        QImage image = qrImage(qr.text, qr.size);
        const QSize size = image.size();
        placements.push_back(
            placed(MarkKind::Qr, std::move(image), size, canvas, qr.position, qr.margin, 100));
    }
    return placements;
}

QImage withMarks(const QImage &image, const std::vector<PlacedMark> &marks)
{
    const bool visible = std::any_of(marks.begin(), marks.end(), [&image](const PlacedMark &mark) {
        return !mark.image.isNull() && mark.opacity > 0 && mark.place.intersects(image.rect());
    });
    if (image.isNull() || !visible)
        return image;
    QImage result = image.convertToFormat(paintedFormat(image));
    if (result.isNull())
        return {};
    QPainter painter(&result);
    for (const PlacedMark &mark : marks) {
        painter.setOpacity(mark.opacity / 100.0);
        painter.drawImage(mark.place.topLeft(), mark.image);
    }
    painter.end();
    keepFacts(image, result);
    return result;
}

} // namespace conversion
