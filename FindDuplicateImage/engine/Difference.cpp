// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/Difference.h"

#include <algorithm>
#include <cstdlib>

namespace lookalikes
{

namespace
{

// Premultiplied, so that colours hidden by full transparency are not compared.
QImage prepared(const QImage &image, QSize size)
{
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

int channelDifference(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

QRgb shown(QRgb pixel, int difference)
{
    if (difference <= differenceTolerance) {
        const int faint = 160 + qGray(pixel) * 80 / 255;
        return qRgb(faint, faint, faint);
    }
    const int faded = 120 - difference * 120 / 255;
    return qRgb(220, faded, faded);
}

} // namespace

Difference differenceOf(const QImage &first, const QImage &second, QSize limit)
{
    if (first.isNull() || second.isNull() || limit.isEmpty())
        return {};
    QSize size = first.size();
    if (size.width() > limit.width() || size.height() > limit.height())
        size = size.scaled(limit, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    const QImage a = prepared(first, size);
    const QImage b = prepared(second, size);
    Difference result{QImage(size, QImage::Format_RGB32)};
    if (a.isNull() || b.isNull() || result.picture.isNull())
        return {};
    qint64 differing = 0;
    for (int y = 0; y < size.height(); ++y) {
        const auto *aRow = reinterpret_cast<const QRgb *>(a.constScanLine(y));
        const auto *bRow = reinterpret_cast<const QRgb *>(b.constScanLine(y));
        auto *row = reinterpret_cast<QRgb *>(result.picture.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const int difference = channelDifference(aRow[x], bRow[x]);
            differing += difference > differenceTolerance ? 1 : 0;
            row[x] = shown(aRow[x], difference);
        }
    }
    result.share = static_cast<double>(differing) / (static_cast<double>(size.width()) * size.height());
    return result;
}

} // namespace lookalikes
