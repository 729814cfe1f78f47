// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/engine/ThumbnailSpool.h"

#include <QBuffer>
#include <QIODevice>

#include <algorithm>
#include <utility>

namespace imaging
{

namespace
{

constexpr int jpegQuality = 85;

QByteArray compressed(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    const bool done =
        image.hasAlphaChannel() ? image.save(&buffer, "PNG") : image.save(&buffer, "JPG", jpegQuality);
    return done ? bytes : QByteArray();
}

} // namespace

qint64 ThumbnailSpool::store(const QImage &thumbnail)
{
    const bool tooLong = std::max(thumbnail.width(), thumbnail.height()) > maxSide;
    const QByteArray bytes =
        compressed(tooLong ? thumbnail.scaled(maxSide, maxSide, Qt::KeepAspectRatio) : thumbnail);
    if (bytes.isEmpty())
        return noThumbnail;
    const std::lock_guard lock(m_mutex);
    // A half-written thumbnail is overwritten by the next one.
    if (!m_device.seek(m_end) || m_device.write(bytes) != bytes.size())
        return noThumbnail;
    m_places.push_back({m_end, bytes.size()});
    m_end += bytes.size();
    return static_cast<qint64>(m_places.size() - 1);
}

qint64 ThumbnailSpool::keepOnly(std::vector<qint64> kept)
{
    const std::lock_guard lock(m_mutex);
    std::sort(kept.begin(), kept.end()); // in device order: each moves towards the front or stays
    std::vector<Place> places(m_places.size(), Place{0, 0});
    m_end = 0;
    for (const qint64 thumbnail : kept) {
        if (thumbnail < 0 || thumbnail >= static_cast<qint64>(m_places.size()))
            continue;
        const Place place = m_places[static_cast<std::size_t>(thumbnail)];
        if (place.offset != m_end) {
            const QByteArray bytes = m_device.seek(place.offset) ? m_device.read(place.length) : QByteArray();
            if (bytes.size() != place.length || !m_device.seek(m_end) ||
                m_device.write(bytes) != bytes.size())
                continue;
        }
        places[static_cast<std::size_t>(thumbnail)] = {m_end, place.length};
        m_end += place.length;
    }
    m_places = std::move(places);
    return m_end;
}

QImage ThumbnailSpool::load(qint64 thumbnail)
{
    QByteArray bytes;
    {
        const std::lock_guard lock(m_mutex);
        if (thumbnail < 0 || thumbnail >= static_cast<qint64>(m_places.size()))
            return {};
        const Place place = m_places[static_cast<std::size_t>(thumbnail)];
        if (!m_device.seek(place.offset))
            return {};
        bytes = m_device.read(place.length);
    }
    return QImage::fromData(bytes);
}

} // namespace imaging
