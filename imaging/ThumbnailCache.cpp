// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ThumbnailCache.h"

#include "imaging/ThumbnailFile.h"

#include <utility>

namespace imaging
{

void ThumbnailCache::setFile(std::shared_ptr<ThumbnailFile> file)
{
    m_pixmaps.clear();
    m_file = std::move(file);
}

QPixmap ThumbnailCache::pixmap(qint64 thumbnail)
{
    if (!m_file || thumbnail == noThumbnail)
        return {};
    if (const QPixmap *known = m_pixmaps.object(thumbnail))
        return *known;
    const QPixmap loaded = QPixmap::fromImage(m_file->load(thumbnail));
    m_pixmaps.insert(thumbnail, new QPixmap(loaded));
    return loaded;
}

} // namespace imaging
