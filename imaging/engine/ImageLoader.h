// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QImage>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

// How all modules read image files. The only engine that opens files itself, since decoders need the file and
// not its bytes. All functions may be called from several threads at once.
namespace imaging
{

// Limit for one decoded image, in MiB: Qt's own process-wide limit (QImageReader::setAllocationLimit), set by
// the first image read.
inline constexpr int imageAllocationLimit = 256;

// Vector images of a smaller nominal size are rendered so that their longer side has this length.
inline constexpr int vectorSide = 1024;

struct LoadedImage {
    QImage image;      // upright: the file's orientation has been applied
    QByteArray format; // detected from the content, in lower case ("jpeg"), whatever the file name
};

// Called after reading the header and before allocating, with the size of the decoded image in bytes (the
// limit, if the decoder does not know it); may block. Not called for rejected images.
using BeforeDecode = std::function<void(qint64 bytes)>;

// `file` is open for reading, or null. nullopt if it cannot be read, has no known format, is damaged, or
// exceeds the limit. For several frames, the first one.
std::optional<LoadedImage> decodeImage(std::unique_ptr<QIODevice> file,
                                       const BeforeDecode &beforeDecode = {});

// Also nullopt if it is not a regular file.
std::optional<LoadedImage> readImage(const QString &path, const BeforeDecode &beforeDecode = {});

// Whether the header states an image above the limit. Decodes no pixels; `file` as for decodeImage().
bool isTooLarge(std::unique_ptr<QIODevice> file);

// As readImage(); `out` is changed on success only.
bool loadImage(const QString &path, QImage &out);

} // namespace imaging
