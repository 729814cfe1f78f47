// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/WorkerThread.h"

#include <QDialog>

// Deletes the files of the thumbnail folder below `temporaryFolder`, and the folder when it is empty then.
// Nothing else: no subfolder, and nothing that a link leads out of the temporary folder. Returns the number
// of files that were deleted.
int removeThumbnails(const QString &temporaryFolder, const core::CancelFlag &cancel);

class ThumbnailRemovalThread : public core::WorkerThread
{
    Q_OBJECT

public:
    explicit ThumbnailRemovalThread(QString temporaryFolder)
        : WorkerThread(LowPriority),
          m_temporaryFolder(std::move(temporaryFolder))
    {
    }

    // After done(): false when it was stopped or failed. All tried are not all gone: Windows removes no file
    // that is open, and a scan holds its own open.
    bool allTried() const { return m_allTried; }

protected:
    void work() override;

private:
    QString m_temporaryFolder;
    bool m_allTried = false;
};

// Shown while the thumbnails of this run are removed before the program ends. Cancelling it keeps what is not
// removed yet, and the window open; the next closing goes on with it.
class ThumbnailRemovalDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ThumbnailRemovalDialog(QWidget *parent = nullptr);
    ~ThumbnailRemovalDialog() override;

    void start(const QString &temporaryFolder);
    void done(int result) override;

signals:
    // The thumbnails are removed, and imaging::ThumbnailStore says so. A scan that goes on still has its own,
    // and removes them and the folder when it goes.
    void closeApp();

private:
    void finish();

    core::WorkerPointer<ThumbnailRemovalThread> m_thread;
};
