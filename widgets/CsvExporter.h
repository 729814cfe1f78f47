// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/CsvFile.h"
#include "widgets/JobHost.h"
#include "widgets/NoticeBar.h"

#include <QPointer>

// Exports the tables of a page: asks for the file, writes on a thread, and tells how it ended. One export at
// a time; its owner must live as long as what the tables read.
class CsvExporter : public QObject
{
    Q_OBJECT

public:
    // `page` is the parent of the file dialog.
    explicit CsvExporter(QWidget *page);

    // `table` is asked after the file is chosen: what is shown may change while the dialog is open. One
    // without `next` exports nothing.
    void start(const QString &suggestedName, const std::function<csv::Table()> &table);
    bool isRunning() const { return m_jobs.isBusy(); }
    void requestStop() { m_jobs.cancel(); }
    // Ends an export and reports nothing.
    void abandon() { m_jobs.drop(); }

signals:
    void started(const QString &what); // "Exporting to D:\\list.csv ..."
    void ended(NoticeBar::Kind kind, const QString &notice);

private:
    void tellEnd(const CsvWriter &writer);

    QWidget *m_page;
    JobHost m_jobs; // the page is busy while an export runs
};
