// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/engine/ThumbnailSink.h"

#include <QByteArray>
#include <QImage>

#include <mutex>
#include <vector>

class QIODevice;

namespace imaging
{

// Stores compressed thumbnails one after another in a file opened by the caller: a few kilobytes per image
// instead of a hundred in memory, and one file instead of a hundred thousand. Thread-safe.
class ThumbnailSpool final : public ThumbnailSink
{
public:
    // Limit for the longer side; thumbnails of long and narrow images are scaled down.
    static constexpr int maxSide = 1024;

    // Must be open for reading and writing, random access, and empty. Not owned; must not be used by others
    // meanwhile.
    explicit ThumbnailSpool(QIODevice &device) : m_device(device) {}

    // noThumbnail if writing fails (a full disk).
    qint64 store(const QImage &thumbnail) override;
    // Drops all other thumbnails: the kept ones move to the front of the device and keep their ids. Returns
    // the size to which the device can be truncated. Each id once, in any order; a thumbnail that cannot be
    // moved loads as null.
    qint64 keepOnly(std::vector<qint64> kept);
    // Null for noThumbnail, and for a thumbnail that cannot be read.
    QImage load(qint64 thumbnail);

private:
    struct Place {
        qint64 offset;
        qint64 length;
    };

    std::mutex m_mutex;
    QIODevice &m_device;
    qint64 m_end = 0;
    std::vector<Place> m_places;
};

} // namespace imaging
