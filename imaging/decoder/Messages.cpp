// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/decoder/Messages.h"

#include "imaging/engine/ImageLoader.h"

#include <QColorSpace>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

namespace decoder
{

namespace
{

constexpr qint32 maxPathLength = 1 << 15; // what Windows allows, in UTF-16 code units
constexpr quint8 maxFormatLength = 32;
constexpr qint64 maxBytes = qint64(imaging::imageAllocationLimit) << 20;

bool writeImage(platform::ByteChannel &to, const QImage &image)
{
    const bool alpha = image.hasAlphaChannel();
    const QImage pixels = image.convertToFormat(alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    const auto rowBytes = static_cast<std::size_t>(pixels.width()) * sizeof(QRgb);
    if (!writeNumber<qint32>(to, pixels.width()) || !writeNumber<qint32>(to, pixels.height()) ||
        !writeNumber<quint8>(to, alpha ? 1 : 0))
        return false;
    // Rows of 32-bit pixels have no padding.
    return to.write(pixels.constBits(), rowBytes * static_cast<std::size_t>(pixels.height()));
}

std::optional<QImage> readImage(platform::ByteChannel &from, int maxSide)
{
    const auto width = readNumber<qint32>(from);
    const auto height = readNumber<qint32>(from);
    const auto alpha = readNumber<quint8>(from);
    if (!alpha || !width || !height || *width < 1 || *height < 1 || *width > maxSide || *height > maxSide ||
        qint64(*width) * *height > maxBytes / qint64(sizeof(QRgb)))
        return std::nullopt;
    QImage image(*width, *height, *alpha != 0 ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (image.isNull() || !from.read(image.bits(), static_cast<std::size_t>(image.sizeInBytes())))
        return std::nullopt;
    return image;
}

bool writeFormat(platform::ByteChannel &to, const QByteArray &format)
{
    const QByteArray text = format.left(maxFormatLength);
    return writeNumber(to, static_cast<quint8>(text.size())) &&
           to.write(text.constData(), static_cast<std::size_t>(text.size()));
}

std::optional<QByteArray> readFormat(platform::ByteChannel &from)
{
    const auto length = readNumber<quint8>(from);
    if (!length || *length > maxFormatLength)
        return std::nullopt;
    QByteArray text(*length, '\0');
    return from.read(text.data(), *length) ? std::optional(text) : std::nullopt;
}

} // namespace

bool writeRequest(platform::ByteChannel &to, const Request &request)
{
    if (request.path.size() > maxPathLength)
        return false;
    return writeNumber(to, request.wish) && writeNumber(to, static_cast<qint32>(request.path.size())) &&
           to.write(request.path.constData(), static_cast<std::size_t>(request.path.size()) * sizeof(QChar));
}

std::optional<Request> readRequest(platform::ByteChannel &from)
{
    const auto wish = readNumber<Wish>(from);
    const auto length = readNumber<qint32>(from);
    if (!wish || !length || *length < 0 || *length > maxPathLength)
        return std::nullopt;
    Request request{*wish, QString(*length, u'\0')};
    if (!from.read(request.path.data(), static_cast<std::size_t>(*length) * sizeof(QChar)))
        return std::nullopt;
    return request;
}

bool writeExamination(platform::ByteChannel &to, const imaging::Examination &examination)
{
    return writeNumber(to, examination.width) && writeNumber(to, examination.height) &&
           writeFormat(to, examination.format) && writeImage(to, examination.samples) &&
           writeImage(to, examination.thumbnail);
}

std::optional<imaging::Examination> readExamination(platform::ByteChannel &from)
{
    const auto width = readNumber<qint32>(from);
    const auto height = readNumber<qint32>(from);
    auto format = height ? readFormat(from) : std::nullopt;
    auto samples = format ? readImage(from, imaging::sampleSide) : std::nullopt;
    auto thumbnail = samples ? readImage(from, maxThumbnailSide) : std::nullopt;
    if (!thumbnail || *width < 1 || *height < 1 ||
        samples->size() != QSize(imaging::sampleSide, imaging::sampleSide))
        return std::nullopt;
    return imaging::Examination{*width, *height, std::move(*format),
                                samples->convertToFormat(QImage::Format_RGB32), std::move(*thumbnail)};
}

bool writePicture(platform::ByteChannel &to, const Picture &picture)
{
    return writeFormat(to, picture.format) && writeImage(to, picture.image);
}

std::optional<Picture> readPicture(platform::ByteChannel &from)
{
    auto format = readFormat(from);
    auto image = format ? readImage(from, std::numeric_limits<qint32>::max()) : std::nullopt;
    if (!image)
        return std::nullopt;
    return Picture{std::move(*format), std::move(*image)};
}

namespace
{

// The formats in which a source is transferred, sent as an index into this list.
constexpr std::array sourceFormats{
    QImage::Format_RGB32,    QImage::Format_ARGB32,     QImage::Format_RGBX64,     QImage::Format_RGBA64,
    QImage::Format_Indexed8, QImage::Format_Grayscale8, QImage::Format_Grayscale16};
constexpr quint32 maxProfileBytes = 4 << 20;
constexpr quint32 maxColors = 256;

QImage asSource(const QImage &image)
{
    if (std::ranges::find(sourceFormats, image.format()) != sourceFormats.end())
        return image;
    const bool alpha = image.hasAlphaChannel();
    if (image.depth() == 1)
        return image.convertToFormat(QImage::Format_Indexed8);
    const QPixelFormat pixel = image.pixelFormat();
    if (pixel.colorModel() == QPixelFormat::CMYK && image.colorSpace().isValid()) {
        const QImage colors =
            image.convertedToColorSpace(QColorSpace(QColorSpace::SRgb), QImage::Format_RGB32);
        if (!colors.isNull())
            return colors;
    }
    const bool deep = image.depth() > 32 || pixel.redSize() > 8;
    return image.convertToFormat(deep    ? alpha ? QImage::Format_RGBA64 : QImage::Format_RGBX64
                                 : alpha ? QImage::Format_ARGB32
                                         : QImage::Format_RGB32);
}

bool writeBlock(platform::ByteChannel &to, const void *data, quint32 bytes)
{
    return writeNumber(to, bytes) && (bytes == 0 || to.write(data, bytes));
}

std::optional<QByteArray> readBlock(platform::ByteChannel &from, quint32 maxSize)
{
    const auto bytes = readNumber<quint32>(from);
    if (!bytes || *bytes > maxSize)
        return std::nullopt;
    QByteArray block(static_cast<qsizetype>(*bytes), '\0');
    return *bytes == 0 || from.read(block.data(), *bytes) ? std::optional(block) : std::nullopt;
}

std::optional<QImage> readSourcePixels(platform::ByteChannel &from)
{
    const auto number = readNumber<quint8>(from);
    const auto width = readNumber<qint32>(from);
    const auto height = readNumber<qint32>(from);
    if (!height || *number >= sourceFormats.size() || *width < 1 || *height < 1)
        return std::nullopt;
    const QImage::Format format = sourceFormats[*number];
    const qint64 bytesPerPixel = QImage::toPixelFormat(format).bitsPerPixel() / 8;
    if (qint64(*width) > maxBytes / bytesPerPixel / *height)
        return std::nullopt;
    const qsizetype rowBytes = (*width * bytesPerPixel + 3) / 4 * 4; // the row stride that QImage uses
    const auto memory = from.readLarge(static_cast<std::size_t>(rowBytes * *height));
    if (!memory)
        return std::nullopt;
    auto owner = std::make_unique<std::shared_ptr<std::byte>>(memory);
    QImage image(
        reinterpret_cast<uchar *>(memory.get()), *width, *height, rowBytes, format,
        [](void *ours) { delete static_cast<std::shared_ptr<std::byte> *>(ours); }, owner.get());
    if (image.isNull())
        return std::nullopt;
    owner.release(); // now owned by the image
    return image;
}

// Indexes beyond the colour table would be used unchecked by later code.
void keepWithinTable(QImage &image)
{
    const auto largest = static_cast<uchar>(std::max<qsizetype>(image.colorCount(), 1) - 1);
    uchar *bits = image.bits();
    std::transform(bits, bits + image.sizeInBytes(), bits,
                   [largest](uchar index) { return std::min(index, largest); });
}

} // namespace

bool writeSource(platform::ByteChannel &to, const Picture &picture)
{
    const QImage image = asSource(picture.image);
    const auto format = std::ranges::find(sourceFormats, image.format());
    if (format == sourceFormats.end())
        return false;
    const QList<QRgb> table = image.colorTable();
    const QByteArray profile = image.colorSpace().iccProfile();
    return writeFormat(to, picture.format) &&
           writeNumber(to, static_cast<quint8>(format - sourceFormats.begin())) &&
           writeNumber<qint32>(to, image.width()) && writeNumber<qint32>(to, image.height()) &&
           to.writeLarge(image.constBits(), static_cast<std::size_t>(image.sizeInBytes())) &&
           writeNumber<qint32>(to, image.dotsPerMeterX()) && writeNumber<qint32>(to, image.dotsPerMeterY()) &&
           writeBlock(to, table.constData(), static_cast<quint32>(table.size() * qsizetype(sizeof(QRgb)))) &&
           writeBlock(to, profile.constData(), static_cast<quint32>(profile.size()));
}

std::optional<Picture> readSource(platform::ByteChannel &from)
{
    auto format = readFormat(from);
    auto image = format ? readSourcePixels(from) : std::nullopt;
    const auto dotsX = image ? readNumber<qint32>(from) : std::nullopt;
    const auto dotsY = dotsX ? readNumber<qint32>(from) : std::nullopt;
    const auto table = dotsY ? readBlock(from, maxColors * sizeof(QRgb)) : std::nullopt;
    const auto profile = table ? readBlock(from, maxProfileBytes) : std::nullopt;
    if (!profile || table->size() % qsizetype(sizeof(QRgb)) != 0)
        return std::nullopt;
    image->setDotsPerMeterX(std::max(*dotsX, 0));
    image->setDotsPerMeterY(std::max(*dotsY, 0));
    if (image->format() == QImage::Format_Indexed8) {
        QList<QRgb> colors(table->size() / qsizetype(sizeof(QRgb)));
        std::copy_n(table->constData(), table->size(), reinterpret_cast<char *>(colors.data()));
        *image = image->copy(); // a copy, since the decoder could still modify the shared memory
        image->setColorTable(colors);
        keepWithinTable(*image);
    }
    if (!profile->isEmpty())
        image->setColorSpace(QColorSpace::fromIccProfile(*profile));
    return Picture{std::move(*format), std::move(*image)};
}

} // namespace decoder
