// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/ImageWriter.h"

#include <QBuffer>

namespace conversion
{

inline QImage colourful(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x * 255 / width, y * 255 / height, (x * 7 + y * 3) % 40));
    }
    return image;
}

// Empty when it could not be written, or is not what was written.
inline QByteArray written(const QImage &image, Encoding encoding, const Metadata &metadata = {})
{
    QBuffer file;
    file.open(QIODevice::ReadWrite);
    const QString problem = writePicture(file, image, encoding, metadata).problem;
    file.seek(0);
    if (!problem.isEmpty() || !checkWritten(file, encoding.target, image.size()).isEmpty())
        return {};
    return file.data();
}

} // namespace conversion
