// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/WallpaperJob.h"
#include "imaging/DecoderPool.h"

#include <QSize>

#include <functional>
#include <optional>

class QFile;

namespace wallpaper
{

// The folder of downloaded wallpapers: copies under our own names, each decoded before it got its name, with
// a thumbnail beside it; and the job files. Does disk I/O; one thread.
class ImageFolder
{
public:
    static constexpr int maxKept = 12; // in addition to the current wallpapers

    // `folder`: absolute path; created if missing.
    ImageFolder(QString folder, imaging::DecoderPool &decoders);

    const QString &path() const { return m_folder; }
    // Whether a path is an image that was stored by add().
    bool holds(const QString &path) const;

    // The image with that key, decoded again.
    std::optional<automation::ShownImage> find(const QString &key);
    // Stores a copy of the bytes, or returns the reason of a failure. Formats that Windows cannot show
    // directly are converted to JPEG. `minSize`: smaller images are rejected.
    std::optional<automation::ShownImage> add(const QString &key, const QByteArray &bytes,
                                              const QSize &minSize, QString &problem);
    // Removes old images.
    void tidy(const QList<automation::ShownImage> &onDesktop);

    QByteArray read(QStringView name) const; // limited to maxJobFileBytes; empty if it does not exist
    bool write(QStringView name, const QByteArray &bytes) const;
    void remove(QStringView name) const;
    // Stores a copy of any image file, for a wallpaper to be restored. Empty if it cannot be read.
    QString preserve(const QString &file) const;
    // Removes such a copy, and no other file.
    void removePreserved(const QString &file) const;

private:
    QString pathOf(QStringView name) const;
    bool place(QStringView name, const std::function<bool(QFile &)> &fill) const;
    bool check(const QString &file, const QSize &minSize, automation::ShownImage &picture, QString &problem);

    QString m_folder;
    imaging::DecoderPool &m_decoders;
    core::CancelFlag m_cancel;
};

} // namespace wallpaper
