// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/FreeSpace.h"
#include "widgets/NoticeBar.h"

#include <QObject>

#include <functional>

class JobHost;
class ScanPage;

namespace securedelete
{

// Overwrites the free space of a drive as a job of the form, and tidies up after a run that crashed or was
// killed. Interface thread.
class FreeSpaceWipe : public QObject
{
    Q_OBJECT

public:
    // Maps a drive to the folder in which the filling folder is created; normally the drive's root.
    using Place = std::function<QString(const QString &drive)>;

    // Jobs and page must outlive this object's jobs.
    FreeSpaceWipe(JobHost &jobs, ScanPage *page, Place place, QObject *parent);

    // To be asked before start().
    static QString question(const QString &drive, quint64 freeBytes);
    // No job may be running.
    void start(const QString &drive);
    void removeLeftOver();

signals:
    void ended(NoticeBar::Kind kind, const QString &text);

private:
    void tell(const QString &drive, const FreeSpaceResult &result, bool stopped, const QString &error);

    JobHost &m_jobs;
    ScanPage *m_page;
    const Place m_place;
};

} // namespace securedelete
