// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/engine/Examination.h"

#include <algorithm>
#include <utility>

namespace imaging
{

namespace
{

// A strip of 40 by 100,000 pixels is a small image whose thumbnail would be forty times as large.
bool thumbnailFits(const QImage &image)
{
    const qint64 shorter = std::min(image.width(), image.height());
    const qint64 longer = std::max(image.width(), image.height());
    const qint64 bytesPerPixel = std::max(image.depth(), 32) / 8;
    const qint64 bytes = thumbnailSide * (longer * thumbnailSide / shorter) * bytesPerPixel;
    return bytes <= qint64(imageAllocationLimit) << 20;
}

QImage thumbnailOf(QImage image)
{
    // Qt interprets "@2x" in a file name as a device pixel ratio.
    image.setDevicePixelRatio(1);
    return image.width() > image.height() ? image.scaledToHeight(thumbnailSide, Qt::FastTransformation)
                                          : image.scaledToWidth(thumbnailSide, Qt::FastTransformation);
}

} // namespace

std::optional<Examination> examine(LoadedImage loaded)
{
    Examination examination;
    examination.width = loaded.image.width();
    examination.height = loaded.image.height();
    examination.format = std::move(loaded.format);
    if (std::min(examination.width, examination.height) < sampleSide || !thumbnailFits(loaded.image))
        return std::nullopt;
    examination.thumbnail = thumbnailOf(std::exchange(loaded.image, {}));
    if (examination.thumbnail.isNull())
        return std::nullopt;
    examination.samples =
        examination.thumbnail.scaled(sampleSide, sampleSide, Qt::IgnoreAspectRatio, Qt::FastTransformation)
            .convertToFormat(QImage::Format_RGB32);
    return examination;
}

} // namespace imaging
