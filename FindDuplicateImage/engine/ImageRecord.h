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

// A picture that was compared.
struct ImageRecord : duplicates::FileRecord {
    int width = 0; // pixels of the decoded picture, upright
    int height = 0;
    QByteArray format;   // what the content is, imaging::LoadedImage::format
    quint32 groupId = 0; // the number of the first picture that this one is alike to; from 1
    qint64 thumbnail = imaging::noThumbnail; // what ThumbnailSink::store() returned

    bool operator==(const ImageRecord &) const = default;
};

// Pictures that are alike to the first of them. Two of the others may look less alike: show each against the
// first.
struct ImageGroup {
    std::vector<ImageRecord> members; // in walk order

    bool operator==(const ImageGroup &) const = default;
};

// The order of the report: by the file size of the first member, largest first; among equals the group that
// was created first.
void sortForReport(std::vector<ImageGroup> &groups);

// The member that is proposed to be kept: the largest picture in pixels, among equals the largest file, then
// the one last written longest ago, then the first. Removed members (checked) are passed over; empty when
// none is left.
std::optional<std::size_t> proposedToKeep(const ImageGroup &group);

// What keeping only that member would free; removed members are passed over.
quint64 freeableBytes(const ImageGroup &group);

} // namespace lookalikes
