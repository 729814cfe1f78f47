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

// Keeps thumbnails compressed, one behind the other, in one file that the caller opened: some kilobytes a
// picture instead of a hundred in memory, and one file instead of a hundred thousand. Thread-safe.
class ThumbnailSpool final : public ThumbnailSink
{
public:
    // Pixels of the longer side of what is kept; thumbnails of long and thin pictures are made smaller.
    static constexpr int maxSide = 1024;

    // Open for reading and writing, random access, empty. Not owned; used by nobody else meanwhile.
    explicit ThumbnailSpool(QIODevice &device) : m_device(device) {}

    // noThumbnail when the device takes no more (a full disk).
    qint64 store(const QImage &thumbnail) override;
    // Gives up all others: what is kept moves to the front of the device, and loads by its number as before.
    // Returns what the device may be cut to. Each number once, in any order; what cannot be moved loads as
    // null.
    qint64 keepOnly(std::vector<qint64> kept);
    // Null for noThumbnail and for what cannot be read back.
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
