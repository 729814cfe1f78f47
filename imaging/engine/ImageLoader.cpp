// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/engine/ImageLoader.h"

#include "imaging/engine/ImageFile.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPixelFormat>

#include <algorithm>
#include <utility>

namespace imaging
{

namespace
{

constexpr qint64 limitBytes = qint64(imageAllocationLimit) << 20;

// Qt keeps the limit in a plain variable: it is set once, before any thread reads it.
void limitAllocations()
{
    [[maybe_unused]] static const bool once = [] {
        QImageReader::setAllocationLimit(imageAllocationLimit);
        return true;
    }();
}

// Counted as in Qt's own check: at least 32 bits per pixel, since every image may be converted to that. The
// limit itself if the header has no size. nullopt if the image is too large.
std::optional<qint64> expectedBytes(const QImageReader &reader)
{
    const QSize size = reader.scaledSize().isValid() ? reader.scaledSize() : reader.size();
    if (!size.isValid())
        return limitBytes;
    const QImage::Format format = reader.imageFormat();
    const int depth = format == QImage::Format_Invalid ? 32 : QImage::toPixelFormat(format).bitsPerPixel();
    const qint64 pixels = qint64(size.width()) * size.height();
    const qint64 bytesPerPixel = std::max(depth, 32) / 8;
    if (pixels > limitBytes / bytesPerPixel)
        return std::nullopt;
    return pixels * bytesPerPixel;
}

// A vector image has no pixels of its own: a small one, such as an icon of 24 pixels, is rendered larger.
void drawLarge(QImageReader &reader)
{
    const QSize size = reader.size();
    if (reader.format() != "svg" || size.isEmpty() || std::max(size.width(), size.height()) >= vectorSide)
        return;
    reader.setScaledSize(size.scaled(vectorSide, vectorSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
}

} // namespace

std::optional<LoadedImage> decodeImage(std::unique_ptr<QIODevice> file, const BeforeDecode &beforeDecode)
{
    limitAllocations();
    const std::unique_ptr<QIODevice> guarded = file ? guardedImage(std::move(file)) : nullptr;
    if (!guarded)
        return std::nullopt;
    QImageReader reader(guarded.get());
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    LoadedImage loaded;
    loaded.format = reader.format();
    if (loaded.format.isEmpty())
        return std::nullopt;
    drawLarge(reader);
    const std::optional<qint64> bytes = expectedBytes(reader);
    if (!bytes)
        return std::nullopt;
    if (beforeDecode)
        beforeDecode(*bytes);
    // Not every decoder allocates through Qt, so the result is checked too.
    if (!reader.read(&loaded.image) || loaded.image.isNull() || loaded.image.sizeInBytes() > limitBytes)
        return std::nullopt;
    return loaded;
}

bool isTooLarge(std::unique_ptr<QIODevice> file)
{
    limitAllocations();
    const std::unique_ptr<QIODevice> guarded = file ? guardedImage(std::move(file)) : nullptr;
    if (!guarded)
        return false;
    QImageReader reader(guarded.get());
    reader.setDecideFormatFromContent(true);
    if (reader.format().isEmpty())
        return false;
    drawLarge(reader);
    return !expectedBytes(reader);
}

std::optional<LoadedImage> readImage(const QString &path, const BeforeDecode &beforeDecode)
{
    auto file = std::make_unique<QFile>(path);
    if (!QFileInfo(path).isFile() || !file->open(QIODevice::ReadOnly))
        return std::nullopt;
    return decodeImage(std::unique_ptr<QIODevice>(std::move(file)), beforeDecode);
}

bool loadImage(const QString &path, QImage &out)
{
    std::optional<LoadedImage> loaded = readImage(path);
    if (!loaded)
        return false;
    out = std::move(loaded->image);
    return true;
}

} // namespace imaging
