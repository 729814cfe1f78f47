// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/CsvFile.h"
#include "widgets/JobHost.h"
#include "widgets/NoticeBar.h"

#include <QPointer>

// Exports the tables of a page: asks for the file, writes on a worker thread, and reports the result. One
// export at a time; what the tables read must outlive this object.
class CsvExporter : public QObject
{
    Q_OBJECT

public:
    // `page` is the parent of the file dialog.
    explicit CsvExporter(QWidget *page);

    // `table` is called after the file has been chosen, since the contents may change while the dialog is
    // open. A table without `next` is not exported.
    void start(const QString &suggestedName, const std::function<csv::Table()> &table);
    bool isRunning() const { return m_jobs.isBusy(); }
    void requestStop() { m_jobs.cancel(); }
    // Cancels an export without reporting anything.
    void abandon() { m_jobs.drop(); }

signals:
    void started(const QString &what); // "Exporting to D:\\list.csv ..."
    void ended(NoticeBar::Kind kind, const QString &notice);

private:
    void reportEnd(const CsvWriter &writer);

    QWidget *m_page;
    JobHost m_jobs; // the page is busy while an export runs
};
