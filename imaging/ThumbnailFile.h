// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/engine/ThumbnailSpool.h"

#include <QFile>

#include <vector>

namespace imaging
{

// The thumbnails of one scan, in a file in ThumbnailStore's folder. The file is open while a scan writes to
// it, and afterwards only during a read, so that it can be deleted at any time; missing thumbnails load as
// null images. The destructor deletes the file, and the folder if it is empty then.
class ThumbnailFile : public ThumbnailSink
{
public:
    // Does disk I/O. Deletes files that a crashed run left, unless this run has created one already. Any
    // thread.
    static void clearLeftovers(const QString &temporaryFolder);

    // Without a folder, or if the folder leads out of the temporary folder, nothing can be stored.
    explicit ThumbnailFile(const QString &temporaryFolder);
    ~ThumbnailFile() override;

    // During the scan, on any thread. Tells ThumbnailStore that there are thumbnails.
    qint64 store(const QImage &thumbnail) override;
    // After the scan, before the first load(): keeps only these, and shrinks the file accordingly.
    void close(std::vector<qint64> kept);
    // One thread at a time.
    QImage load(qint64 thumbnail);

    QString fileName() const { return m_file.fileName(); }

private:
    QString m_temporaryFolder;
    QFile m_file;
    ThumbnailSpool m_spool;
};

} // namespace imaging
