// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/FileRecord.h"
#include "imaging/engine/ThumbnailSink.h"

#include <QByteArray>

#include <cstddef>
#include <optional>
#include <vector>

namespace lookalikes
{

// An image that was compared.
struct ImageRecord : duplicates::FileRecord {
    int width = 0; // pixels of the decoded, upright image
    int height = 0;
    QByteArray format;                       // detected format, imaging::LoadedImage::format
    quint32 groupId = 0;                     // number of the first image it is similar to; from 1
    qint64 thumbnail = imaging::noThumbnail; // id returned by ThumbnailSink::store()

    bool operator==(const ImageRecord &) const = default;
};

// Images that are similar to the first of them. Two of the others may be less similar to each other: show
// each against the first.
struct ImageGroup {
    std::vector<ImageRecord> members; // in walk order

    bool operator==(const ImageGroup &) const = default;
};

// Report order: by the file size of the first member, largest first; equal ones in order of creation.
void sortForReport(std::vector<ImageGroup> &groups);

// The member suggested to be kept: the most pixels, then the largest file, then the oldest write time, then
// the first. Removed members (checked) are skipped; nullopt if none is left.
std::optional<std::size_t> proposedToKeep(const ImageGroup &group);

// Bytes freed by keeping only that member; removed members are skipped.
quint64 freeableBytes(const ImageGroup &group);

} // namespace lookalikes
