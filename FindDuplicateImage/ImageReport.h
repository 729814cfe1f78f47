// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/ImageRecord.h"

#include <QStringList>

#include <cstddef>
#include <memory>
#include <vector>

namespace imaging
{
class DecoderPool;
}
namespace imaging
{
class ThumbnailFile;
}

// What the results page shows.
struct ImageReport {
    QString root; // as the user chose it
    std::vector<lookalikes::ImageGroup> groups;
    std::size_t imagesCompared = 0;
    std::size_t placeholders = 0; // not compared, their content lies in a cloud store
    int picturesLost = 0;         // not compared, their decoder crashed or did not answer
    int foldersUnread = 0;        // that could not be listed, or in part only
    bool decodedHere = false;     // no decoder could be started, see imaging::DecoderPool::usesThisProcess()
    std::shared_ptr<imaging::DecoderPool> decoders;
    std::shared_ptr<imaging::ThumbnailFile> thumbnails;
};

struct ImageStatistics {
    std::size_t groups = 0; // with at least two pictures left
    std::size_t images = 0; // in those
    // What keeping only the proposed picture of each group would free.
    quint64 freeableBytes = 0;
};
ImageStatistics statisticsOf(const std::vector<lookalikes::ImageGroup> &groups);

// What the user should know about how the pictures were compared; mostly nothing.
QStringList remarks(const ImageReport &report);
// "4000 x 3000" with a real multiplication sign.
QString dimensionsText(const lookalikes::ImageRecord &image);
// "JPEG"
QString formatText(const lookalikes::ImageRecord &image);
