// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/decoder/Messages.h"

#include "imaging/engine/ImageLoader.h"

#include <limits>

namespace decoder
{

namespace
{

constexpr qint32 longestPath = 1 << 15; // what Windows allows, in UTF-16 code units
constexpr quint8 longestFormat = 32;
constexpr qint64 mostBytes = qint64(imaging::imageAllocationLimit) << 20;

bool writeImage(platform::ByteChannel &to, const QImage &image)
{
    const bool alpha = image.hasAlphaChannel();
    const QImage pixels = image.convertToFormat(alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    const auto rowBytes = static_cast<std::size_t>(pixels.width()) * sizeof(QRgb);
    if (!writeNumber<qint32>(to, pixels.width()) || !writeNumber<qint32>(to, pixels.height()) ||
        !writeNumber<quint8>(to, alpha ? 1 : 0))
        return false;
    // 32-bit rows have no gaps between them.
    return to.write(pixels.constBits(), rowBytes * static_cast<std::size_t>(pixels.height()));
}

std::optional<QImage> readImage(platform::ByteChannel &from, int longestSide)
{
    const auto width = readNumber<qint32>(from);
    const auto height = readNumber<qint32>(from);
    const auto alpha = readNumber<quint8>(from);
    if (!alpha || !width || !height || *width < 1 || *height < 1 || *width > longestSide ||
        *height > longestSide || qint64(*width) * *height > mostBytes / qint64(sizeof(QRgb)))
        return std::nullopt;
    QImage image(*width, *height, *alpha != 0 ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (image.isNull() || !from.read(image.bits(), static_cast<std::size_t>(image.sizeInBytes())))
        return std::nullopt;
    return image;
}

bool writeFormat(platform::ByteChannel &to, const QByteArray &format)
{
    const QByteArray text = format.left(longestFormat);
    return writeNumber(to, static_cast<quint8>(text.size())) &&
           to.write(text.constData(), static_cast<std::size_t>(text.size()));
}

std::optional<QByteArray> readFormat(platform::ByteChannel &from)
{
    const auto length = readNumber<quint8>(from);
    if (!length || *length > longestFormat)
        return std::nullopt;
    QByteArray text(*length, '\0');
    return from.read(text.data(), *length) ? std::optional(text) : std::nullopt;
}

} // namespace

bool writeRequest(platform::ByteChannel &to, const Request &request)
{
    if (request.path.size() > longestPath)
        return false;
    return writeNumber(to, request.wish) && writeNumber(to, static_cast<qint32>(request.path.size())) &&
           to.write(request.path.constData(), static_cast<std::size_t>(request.path.size()) * sizeof(QChar));
}

std::optional<Request> readRequest(platform::ByteChannel &from)
{
    const auto wish = readNumber<Wish>(from);
    const auto length = readNumber<qint32>(from);
    if (!wish || !length || *length < 0 || *length > longestPath)
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
    auto thumbnail = samples ? readImage(from, longestThumbnailSide) : std::nullopt;
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

} // namespace decoder
