// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/ThumbnailSpool.h"

#include <QFile>

// The thumbnails of one scan, in a file of core::ThumbnailStore's folder. The file is open while a scan
// writes to it and afterwards only for the moment of a read, so that it can be removed at any time; what is
// gone loads as a null image. Removes its file when it goes, and the folder when that is empty then.
class ThumbnailFile : public lookalikes::ThumbnailSink
{
public:
    // Nothing can be stored when the folder cannot be made, or leads out of the temporary folder.
    explicit ThumbnailFile(const QString &temporaryFolder);
    ~ThumbnailFile() override;

    // During the scan, on any thread. Notes in core::ThumbnailStore that there are thumbnails.
    qint64 store(const QImage &thumbnail) override;
    // After the scan, before the first load().
    void close();
    // One thread.
    QImage load(qint64 thumbnail);

    QString fileName() const { return m_file.fileName(); }

private:
    QString m_temporaryFolder;
    QFile m_file;
    lookalikes::ThumbnailSpool m_spool;
};
