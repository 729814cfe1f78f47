// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QPixmap>

#include <memory>

namespace imaging
{

class ThumbnailFile;

// The thumbnails on the screen, loaded when they are first painted.
class ThumbnailCache
{
public:
    void setFile(std::shared_ptr<ThumbnailFile> file);
    // Null for an image without a thumbnail.
    QPixmap pixmap(qint64 thumbnail);

private:
    static constexpr int maxPixmaps = 400;

    std::shared_ptr<ThumbnailFile> m_file;
    QCache<qint64, QPixmap> m_pixmaps{maxPixmaps};
};

} // namespace imaging
