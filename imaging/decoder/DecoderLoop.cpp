// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/decoder/DecoderLoop.h"

#include "imaging/decoder/Messages.h"
#include "platform/FileReader.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace decoder
{

namespace
{

std::optional<imaging::LoadedImage> load(platform::ByteChannel &application, const imaging::Decode &decode,
                                         const QString &path)
{
    try {
        return decode(path, [&application](qint64 bytes) {
            // If the other end is gone, sending the answer will fail too.
            if (writeNumber(application, Reply::Needs) && writeNumber(application, bytes))
                readNumber<quint8>(application);
        });
    } catch (const std::exception &) { // out of memory
        return std::nullopt;
    }
}

// Reads the header again, to report why there is no image.
Reply refusal(const Request &request)
{
    try {
        return request.wish == Wish::Source && isTooLarge(request.path) ? Reply::TooLarge : Reply::Failed;
    } catch (const std::exception &) {
        return Reply::Failed;
    }
}

QImage bounded(const QImage &thumbnail)
{
    if (std::max(thumbnail.width(), thumbnail.height()) <= maxThumbnailSide)
        return thumbnail;
    const QSize size = thumbnail.size().scaled(maxThumbnailSide, maxThumbnailSide, Qt::KeepAspectRatio);
    return thumbnail.scaled(size.expandedTo(QSize(1, 1)));
}

bool answerExamine(platform::ByteChannel &application, imaging::LoadedImage loaded)
{
    std::optional<imaging::Examination> examination = imaging::examine(std::move(loaded));
    if (!examination)
        return writeNumber(application, Reply::Failed);
    examination->thumbnail = bounded(examination->thumbnail);
    return writeNumber(application, Reply::Done) && writeExamination(application, *examination);
}

bool answer(platform::ByteChannel &application, const Request &request, const imaging::Decode &decode)
{
    std::optional<imaging::LoadedImage> loaded = load(application, decode, request.path);
    if (!loaded)
        return writeNumber(application, refusal(request));
    if (request.wish == Wish::Examine)
        return answerExamine(application, std::move(*loaded));
    if (!writeNumber(application, Reply::Done))
        return false;
    const Picture picture{loaded->format, std::move(loaded->image)};
    return request.wish == Wish::Source ? writeSource(application, picture)
                                        : writePicture(application, picture);
}

} // namespace

std::optional<imaging::LoadedImage> decodeFile(const QString &path, const imaging::BeforeDecode &beforeDecode)
{
    return imaging::decodeImage(platform::openShared(path), beforeDecode);
}

bool isTooLarge(const QString &path)
{
    return imaging::isTooLarge(platform::openShared(path));
}

void serve(platform::ByteChannel &application, const imaging::Decode &decode)
{
    if (!writeNumber(application, greeting))
        return;
    while (const std::optional<Request> request = readRequest(application)) {
        if (!answer(application, *request, decode))
            return;
    }
}

} // namespace decoder
