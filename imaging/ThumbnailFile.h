// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/engine/ThumbnailSpool.h"

#include <QFile>

#include <vector>

namespace imaging
{

// The thumbnails of one scan, in a file of ThumbnailStore's folder. The file is open while a scan
// writes to it and afterwards only for the moment of a read, so that it can be removed at any time; what is
// gone loads as a null image. Removes its file when it goes, and the folder when that is empty then.
class ThumbnailFile : public ThumbnailSink
{
public:
    // Nothing can be stored when the folder cannot be made, or leads out of the temporary folder.
    // Erases the files that an earlier run left when it crashed. Before the first one of this run.
    static void clearLeftovers(const QString &temporaryFolder);

    explicit ThumbnailFile(const QString &temporaryFolder);
    ~ThumbnailFile() override;

    // During the scan, on any thread. Notes in ThumbnailStore that there are thumbnails.
    qint64 store(const QImage &thumbnail) override;
    // After the scan, before the first load(): only these are kept, and the file shrinks to them.
    void close(std::vector<qint64> kept);
    // One thread.
    QImage load(qint64 thumbnail);

    QString fileName() const { return m_file.fileName(); }

private:
    QString m_temporaryFolder;
    QFile m_file;
    ThumbnailSpool m_spool;
};

} // namespace imaging
