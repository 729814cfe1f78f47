// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/WorkerThread.h"

#include <QList>
#include <QStringList>

#include <functional>

namespace csv
{

// A table as it goes into a file. `next` fills one row a call and returns false after the last; it is called
// on the exporting thread, must own, or keep alive, whatever it reads, and throws when it cannot go on.
struct Table {
    QString suggestedName; // of the file, without its extension
    QStringList titles;
    std::function<bool(QStringList &row)> next;
    // Ends a call of `next` that waits; from any thread. None for one that never waits.
    std::function<void()> stopWaiting = {};

    // For a table short enough to be made at once.
    void setRows(QList<QStringList> rows);
};

// One field after RFC 4180: in quotes when it holds a comma, a quote or a line break, quotes doubled. A text
// that a spreadsheet would take for a formula (it begins with = + - @, a tab or a carriage return) gets an
// apostrophe in front, which spreadsheets hide: a file name must never be able to run something on the
// reader's machine.
QString field(const QString &text);
QString line(const QStringList &fields); // with its CR LF

} // namespace csv

// Writes a table as UTF-8 with a byte order mark (without one, Excel reads the file in the system's old code
// page) to a temporary name beside the target, and replaces the target when it is complete.
class CsvWriter : public core::WorkerThread
{
    Q_OBJECT

public:
    CsvWriter(QString file, csv::Table table);

    // What became of the file. A request to stop that comes after the last row changes nothing any more.
    enum class Outcome { Written, Cancelled, Failed };

    QString file() const { return m_file; }
    // After done().
    Outcome outcome() const { return m_outcome; }
    qint64 rows() const { return m_rows; }
    // Why it failed, in words for the user.
    QString reason() const { return m_fileError.isEmpty() ? error() : m_fileError; }

protected:
    void work() override;
    void interrupt() override;

private:
    Outcome write();

    QString m_file;
    csv::Table m_table;
    Outcome m_outcome = Outcome::Failed;
    qint64 m_rows = 0;
    QString m_fileError;
};
