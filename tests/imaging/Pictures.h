// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/DecoderPool.h"
#include "tests/imaging/engine/BlockPicture.h"
#include "tests/support/TestFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>

namespace tests
{

// Ten by ten blocks of colours that the seed decides: two seeds are never alike, one seed at any size is.
inline QImage blocks(unsigned seed, QSize size = {400, 300}, QImage::Format format = QImage::Format_RGB32)
{
    std::mt19937 random(seed);
    return blockPicture(size, 10, random).convertToFormat(format);
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
    return QDir::toNativeSeparators(QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                                    QStringLiteral("/../imaging/decoder_double.exe")));
}

inline QString realDecoder()
{
    return QDir::toNativeSeparators(
        QDir::cleanPath(QCoreApplication::applicationDirPath() +
                        QStringLiteral("/../../imaging/decoder/LarkspurDecoder.exe")));
}

} // namespace tests
