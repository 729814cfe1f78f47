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

// The content of the results page.
struct ImageReport {
    QString root; // as chosen by the user
    std::vector<lookalikes::ImageGroup> groups;
    std::size_t imagesCompared = 0;
    std::size_t placeholders = 0; // not compared: the content is in the cloud
    int imagesLost = 0;           // not compared: the decoder crashed or did not answer
    int foldersUnread = 0;        // not listed, or only in part
    bool decodedHere =
        false; // no decoder process could be started, see imaging::DecoderPool::usesThisProcess()
    std::shared_ptr<imaging::DecoderPool> decoders;
    std::shared_ptr<imaging::ThumbnailFile> thumbnails;
};

struct ImageStatistics {
    std::size_t groups = 0; // with at least two images left
    std::size_t images = 0; // in those groups
    // Bytes freed by keeping only the suggested image of each group.
    quint64 freeableBytes = 0;
};
ImageStatistics statisticsOf(const std::vector<lookalikes::ImageGroup> &groups);

// What the user should know about how the images were compared; usually empty.
QStringList remarks(const ImageReport &report);
// "4000 x 3000" with a real multiplication sign.
QString dimensionsText(const lookalikes::ImageRecord &image);
// "JPEG"
QString formatText(const lookalikes::ImageRecord &image);
