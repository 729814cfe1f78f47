// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/WorkerThread.h"

#include <QDialog>

// Deletes the files of the thumbnail folder below `temporaryFolder`, and the folder if it is empty then.
// Nothing else: no subfolders, and nothing outside the temporary folder that a link leads to. Returns the
// number of deleted files.
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

    // After done(): false if it was stopped or failed. All files were tried, but some may remain: Windows
    // does not delete open files, and a running scan keeps its own open.
    bool allTried() const { return m_allTried; }

protected:
    void work() override;

private:
    QString m_temporaryFolder;
    bool m_allTried = false;
};

// Shown while this run's thumbnails are deleted before the program ends. Cancelling keeps the remaining files
// and the window open; the next attempt to close continues.
class ThumbnailRemovalDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ThumbnailRemovalDialog(QWidget *parent = nullptr);
    ~ThumbnailRemovalDialog() override;

    void start(const QString &temporaryFolder);
    void done(int result) override;

signals:
    // The thumbnails have been deleted and imaging::ThumbnailStore updated. A scan that is still running
    // deletes its own file and the folder when it ends.
    void closeApp();

private:
    void finish();

    core::WorkerPointer<ThumbnailRemovalThread> m_thread;
};
