// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/IconImage.h"

#include "ExtractIcon/engine/BitmapDecoder.h"
#include "ExtractIcon/engine/Bytes.h"
#include "imaging/engine/ImageLoader.h"

#include <QBuffer>
#include <QCoreApplication>

#include <memory>

namespace icons
{

namespace
{

constexpr qint64 pngSizeAt = 16; // width and height in the first chunk, big-endian

QSize pngSize(QByteArrayView png)
{
    const std::optional<QByteArrayView> found = range(png, pngSizeAt, 8);
    if (!found)
        return {};
    const auto width = qFromBigEndian<quint32>(found->data());
    const auto height = qFromBigEndian<quint32>(found->data() + 4);
    if (width < 1 || width > maxSide || height < 1 || height > maxSide)
        return {};
    return {int(width), int(height)};
}

QImage decodePng(QByteArrayView png)
{
    if (!pngSize(png).isValid())
        return {};
    auto memory = std::make_unique<QBuffer>();
    memory->setData(png.data(), static_cast<int>(png.size()));
    if (!memory->open(QIODevice::ReadOnly))
        return {};
    const std::optional<imaging::LoadedImage> loaded = imaging::decodeImage(std::move(memory));
    return loaded ? loaded->image : QImage();
}

} // namespace

bool isPng(QByteArrayView bytes)
{
    return bytes.startsWith(QByteArrayView("\x89PNG\r\n\x1a\n"));
}

ImageFacts imageFacts(QByteArrayView bytes, const DirectoryEntry &entry)
{
    ImageFacts facts;
    facts.png = isPng(bytes);
    facts.bytes = bytes.size();
    const std::optional<BitmapHeader> bitmap = facts.png ? std::nullopt : bitmapHeader(bytes);
    const QSize stored = facts.png ? pngSize(bytes) : bitmap ? bitmap->size : QSize();
    facts.width = entry.width != 0 ? entry.width : stored.isValid() ? stored.width() : 0;
    facts.height = entry.height != 0 ? entry.height : stored.isValid() ? stored.height() : 0;
    if (facts.png)
        facts.depth = 32;
    else
        facts.depth = entry.bits != 0 ? entry.bits : bitmap ? bitmap->bits : 0;
    return facts;
}

IconImage decodeImage(QByteArrayView bytes, const DirectoryEntry &entry)
{
    IconImage result{imageFacts(bytes, entry), {}};
    if (result.facts.png) {
        result.image = decodePng(bytes);
        if (!result.image.isNull())
            result.facts.depth = result.image.depth();
    } else if (const std::optional<DecodedBitmap> bitmap = decodeBitmap(bytes)) {
        result.image = bitmap->image;
    }
    return result;
}

int representative(const QList<ImageFacts> &images)
{
    int best = -1;
    for (int i = 0; i < images.size(); ++i) {
        if (images[i].width == 0)
            return i;
        if (best < 0 || images[i].width > images[best].width)
            best = i;
    }
    return best;
}

QString sizeAndDepth(const ImageFacts &facts)
{
    return QCoreApplication::translate("ExtractIcon", "%1x%2, %3 bits")
        .arg(facts.width)
        .arg(facts.height)
        .arg(facts.depth);
}

} // namespace icons
