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

// The folder where the pictures of the desktop lie: copies under names of ours, each decoded before it got
// its name, with a thumbnail beside it; and the files of the job. Disk, one thread.
class PictureFolder
{
public:
    static constexpr int maxKept = 12; // pictures besides those on the desktop

    // `folder`: whole; made when it is missing.
    PictureFolder(QString folder, imaging::DecoderPool &decoders);

    const QString &path() const { return m_folder; }
    // Whether a path names a picture that was put here by add().
    bool holds(const QString &path) const;

    // The picture of that key, decoded once more.
    std::optional<automation::ShownPicture> find(const QString &key);
    // Puts a copy of the bytes here, or says why not. What Windows cannot show as it is becomes a JPEG.
    // `smallest`: the size below which a picture is of no use.
    std::optional<automation::ShownPicture> add(const QString &key, const QByteArray &bytes,
                                                const QSize &smallest, QString &problem);
    // Removes old pictures.
    void tidy(const QList<automation::ShownPicture> &onDesktop);

    QByteArray read(QStringView name) const; // at most maxJobFileBytes; empty when there is none
    bool write(QStringView name, const QByteArray &bytes) const;
    void remove(QStringView name) const;
    // A copy of any picture file under a name of its own, for a wallpaper that is to come back. Empty when it
    // cannot be read.
    QString preserve(const QString &file) const;
    // Removes such a copy, and no other file.
    void removePreserved(const QString &file) const;

private:
    QString pathOf(QStringView name) const;
    bool place(QStringView name, const std::function<bool(QFile &)> &fill) const;
    bool check(const QString &file, const QSize &smallest, automation::ShownPicture &picture,
               QString &problem);

    QString m_folder;
    imaging::DecoderPool &m_decoders;
    core::CancelFlag m_cancel;
};

} // namespace wallpaper
