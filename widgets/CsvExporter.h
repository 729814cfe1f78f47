// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/CsvFile.h"
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
    ~CsvExporter() override;

    // `table` is asked after the file is chosen: what is shown may change while the dialog is open. One
    // without `next` exports nothing.
    void start(const QString &suggestedName, const std::function<csv::Table()> &table);
    bool isRunning() const { return m_thread != nullptr; }
    void requestStop();
    // Ends an export without a word.
    void abandon() { m_thread.reset(); }

signals:
    void started(const QString &what); // "Exporting to D:\\list.csv ..."
    void ended(NoticeBar::Kind kind, const QString &notice);

private:
    void tellEnd();

    QWidget *m_page;
    core::WorkerPointer<CsvWriter> m_thread;
};
