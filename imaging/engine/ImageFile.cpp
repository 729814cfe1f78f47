// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/engine/ImageFile.h"

#include "imaging/engine/ImageLoader.h"

#include <QBuffer>
#include <QByteArray>
#include <QtEndian>

namespace imaging
{

namespace
{

constexpr qsizetype signatureBytes = 8;

// A file larger than this would exceed the loader's limit, unless most of it is not image data.
constexpr qint64 maxBytesInMemory = qint64(imageAllocationLimit) << 20;

// A chunk consists of length, name, content and checksum. Anything after the end chunk is ignored.
bool chunksFit(const QByteArray &png)
{
    constexpr qsizetype headBytes = 8;
    constexpr qsizetype checksumBytes = 4;
    qsizetype at = signatureBytes;
    while (png.size() - at >= headBytes) {
        const qint64 length = qFromBigEndian<quint32>(png.constData() + at);
        if (png.mid(at + 4, 4) == "IEND")
            return true;
        if (length > png.size() - at - headBytes)
            return false;
        at += headBytes + length + checksumBytes;
    }
    return true;
}

} // namespace

std::unique_ptr<QIODevice> guardedImage(std::unique_ptr<QIODevice> file)
{
    if (file->peek(signatureBytes) != "\x89PNG\r\n\x1a\n" || file->size() > maxBytesInMemory)
        return file;
    auto memory = std::make_unique<QBuffer>();
    memory->setData(file->readAll());
    if (!chunksFit(memory->data()) || !memory->open(QIODevice::ReadOnly))
        return nullptr;
    return memory;
}

} // namespace imaging
