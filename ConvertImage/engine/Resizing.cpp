// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Resizing.h"

#include "ConvertImage/engine/ImageFormat.h"

#include <algorithm>
#include <limits>

namespace conversion
{

namespace
{

int side(qint64 pixels)
{
    return static_cast<int>(std::clamp<qint64>(pixels, 0, std::numeric_limits<int>::max()));
}

// The length of the other side when `from` pixels become `to`.
int followingSide(int other, int from, int to)
{
    if (from <= to)
        return side(qint64(other) * (to / std::max(from, 1)));
    return other / (from / to);
}

// A grey image that was scaled as RGB back to grey, by taking one channel. Qt's own conversion would weight
// the channels by the colour profile.
template <class Value>
void takeOneChannel(const QImage &colours, QImage &grey)
{
    for (int y = 0; y < grey.height(); ++y) {
        const auto *from = reinterpret_cast<const Value *>(colours.constScanLine(y));
        auto *to = reinterpret_cast<Value *>(grey.scanLine(y));
        for (int x = 0; x < grey.width(); ++x)
            to[x] = from[4 * x];
    }
}

QImage greyAgain(const QImage &colours, QImage::Format format)
{
    QImage grey(colours.size(), format);
    if (grey.isNull())
        return {};
    if (format == QImage::Format_Grayscale8)
        takeOneChannel<uchar>(colours.convertToFormat(QImage::Format_RGBX8888), grey);
    else
        takeOneChannel<quint16>(colours.convertToFormat(QImage::Format_RGBX64), grey);
    return grey;
}

} // namespace

QSize resizedSize(const QSize &size, const Resize &resize)
{
    if (!resize.on || size.isEmpty())
        return size;
    switch (resize.mode) {
    case ScaleMode::Percentage:
        return {side(qint64(size.width()) * resize.percentage / 100),
                side(qint64(size.height()) * resize.percentage / 100)};
    case ScaleMode::Absolute:
        return {resize.absoluteWidth, resize.absoluteHeight};
    case ScaleMode::Relative:
        break;
    }
    if (resize.relativeTo == Side::Width) {
        const int width = resize.relativeWidth;
        return width <= 0 ? size : QSize(width, followingSide(size.height(), size.width(), width));
    }
    const int height = resize.relativeHeight;
    return height <= 0 ? size : QSize(followingSide(size.width(), size.height(), height), height);
}

QImage resized(const QImage &image, const QSize &size, bool preview)
{
    if (size == image.size())
        return image;
    if (preview)
        return image.scaled(size, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    // Qt scales only some of the formats with 16 bits per channel without converting them.
    QImage source = image;
    if (isDeep(image))
        source.convertTo(image.hasAlphaChannel() ? QImage::Format_RGBA64_Premultiplied
                                                 : QImage::Format_RGBX64);
    QImage result = source.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (image.format() == QImage::Format_Grayscale8 || image.format() == QImage::Format_Grayscale16)
        result = greyAgain(result, image.format());
    keepFacts(image, result);
    return result;
}

} // namespace conversion
