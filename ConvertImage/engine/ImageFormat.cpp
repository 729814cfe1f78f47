// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/ImageFormat.h"

#include <QColorSpace>

namespace conversion
{

bool isDeep(const QImage &image)
{
    switch (image.format()) {
    case QImage::Format_Grayscale16:
    case QImage::Format_RGB30:
    case QImage::Format_BGR30:
    case QImage::Format_A2RGB30_Premultiplied:
    case QImage::Format_A2BGR30_Premultiplied:
        return true;
    default:
        return image.depth() > 32;
    }
}

bool isTransparentAnywhere(const QImage &image)
{
    if (!image.hasAlphaChannel())
        return false;
    const QImage alpha = image.convertToFormat(QImage::Format_Alpha8);
    for (int y = 0; y < alpha.height(); ++y) {
        const uchar *row = alpha.constScanLine(y);
        if (std::any_of(row, row + alpha.width(), [](uchar value) { return value != 255; }))
            return true;
    }
    return false;
}

QImage inSrgb(const QImage &image)
{
    const QColorSpace space = image.colorSpace();
    const QColorSpace srgb(QColorSpace::SRgb);
    if (!space.isValid() || space == srgb)
        return image;
    QImage converted = image.convertedToColorSpace(srgb);
    return converted.isNull() ? image : converted;
}

void keepFacts(const QImage &from, QImage &to)
{
    to.setDotsPerMeterX(from.dotsPerMeterX());
    to.setDotsPerMeterY(from.dotsPerMeterY());
    to.setColorSpace(from.colorSpace());
}

} // namespace conversion
