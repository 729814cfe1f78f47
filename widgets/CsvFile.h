// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/WorkerThread.h"

#include <QList>
#include <QStringList>

#include <functional>

namespace csv
{

// A table to write. `next` fills one row per call and returns false after the last; it is called on the
// exporting thread, must own or keep alive whatever it reads, and throws if it cannot continue.
struct Table {
    QString suggestedName; // file name without extension
    QStringList titles;
    std::function<bool(QStringList &row)> next;
    // Unblocks a waiting call of `next`; any thread. Empty if `next` never waits.
    std::function<void()> stopWaiting = {};

    // For a table that is short enough to be built in advance.
    void setRows(QList<QStringList> rows);
};

// A field as in RFC 4180: quoted if it contains a comma, quote or line break, with quotes doubled. A text
// that a spreadsheet would interpret as a formula (it starts with = + - @, a tab or a carriage return) gets
// an apostrophe in front, which spreadsheets hide: a file name must never execute anything on the reader's
// computer.
QString field(const QString &text);
QString line(const QStringList &fields); // including CR LF

} // namespace csv

// Writes a table as UTF-8 with a byte order mark (without one, Excel reads the file in the system's old code
// page) to a temporary name beside the target, and replaces the target when it is complete.
class CsvWriter : public core::WorkerThread
{
    Q_OBJECT

public:
    CsvWriter(QString file, csv::Table table);

    // A stop request after the last row has no effect.
    enum class Outcome { Written, Cancelled, Failed };

    QString file() const { return m_file; }
    // Valid after done().
    Outcome outcome() const { return m_outcome; }
    qint64 rows() const { return m_rows; }
    // Why it failed, as a text for the user.
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
