// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QImage>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

// How every module reads a picture file. This is the one engine that opens files by itself: decoders
// want the file, not its bytes. All functions may be called from several threads at once.
namespace imaging
{

// What one decoded picture may take, in MiB of four or more bytes a pixel: Qt's own process-wide limit
// (QImageReader::setAllocationLimit), set by the first picture read.
inline constexpr int imageAllocationLimit = 256;

// The longer side at which a vector picture that states a smaller size is drawn.
inline constexpr int vectorSide = 1024;

struct LoadedImage {
    QImage image;      // upright: the orientation that the file states is applied
    QByteArray format; // as the content says, in lower case ("jpeg"), whatever the file's name
};

// Called once the header is read, with the bytes that the decoded picture will take (the whole limit where
// the decoder does not tell), and before they are allocated; may block. Not called for what is refused.
using BeforeDecode = std::function<void(qint64 bytes)>;

// `file` is open for reading, or null. Empty for what cannot be read, is no picture of a known format, is
// damaged, or is larger than the limit. A file with several frames gives its first.
std::optional<LoadedImage> decodeImage(std::unique_ptr<QIODevice> file,
                                       const BeforeDecode &beforeDecode = {});

// Empty also for what is no regular file.
std::optional<LoadedImage> readImage(const QString &path, const BeforeDecode &beforeDecode = {});

// Whether the header states a picture above the limit. Reads no pixels; `file` as for decodeImage().
bool isTooLarge(std::unique_ptr<QIODevice> file);

// As readImage(); `out` is changed on success only.
bool loadImage(const QString &path, QImage &out);

} // namespace imaging
