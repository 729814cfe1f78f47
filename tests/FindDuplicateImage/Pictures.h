// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/DecoderPool.h"
#include "tests/support/TestFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QPainter>

#include <memory>
#include <random>

namespace tests
{

// Ten by ten blocks of colours that the seed decides: two seeds are never alike, one seed at any size is.
inline QImage blocks(unsigned seed, QSize size = {400, 300}, QImage::Format format = QImage::Format_RGB32)
{
    std::mt19937 random(seed);
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 10; ++x)
            painter.fillRect(QRect(QPoint(size.width() * x / 10, size.height() * y / 10),
                                   QPoint(size.width() * (x + 1) / 10, size.height() * (y + 1) / 10)),
                             QColor::fromRgb(40 + static_cast<int>(random() % 160),
                                             40 + static_cast<int>(random() % 160),
                                             40 + static_cast<int>(random() % 160)));
    painter.end();
    return image.convertToFormat(format);
}

// Returns the full path.
inline QString savePicture(const TestFolder &folder, const QString &name, const QImage &image)
{
    const QString path = folder.makeFile(name);
    if (!image.save(path))
        qFatal("Cannot write %ls", qUtf16Printable(path));
    return path;
}

inline QString doublesProgram()
{
    return QDir::toNativeSeparators(QCoreApplication::applicationDirPath() +
                                    QStringLiteral("/decoder_double.exe"));
}

inline QString realDecoder()
{
    return QDir::toNativeSeparators(
        QDir::cleanPath(QCoreApplication::applicationDirPath() +
                        QStringLiteral("/../../FindDuplicateImage/decoder/LarkspurDecoder.exe")));
}

} // namespace tests
