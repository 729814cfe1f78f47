// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/CsvFile.h"

#include "platform/NewFile.h"

namespace
{
constexpr qsizetype writeAt = 1 << 16; // size of a write in characters
constexpr char byteOrderMark[] = "\xEF\xBB\xBF";
} // namespace

namespace csv
{

void Table::setRows(QList<QStringList> rows)
{
    next = [rows = std::move(rows), at = qsizetype(0)](QStringList &row) mutable {
        if (at == rows.size())
            return false;
        row = rows.at(at++);
        return true;
    };
}

QString field(const QString &text)
{
    constexpr QStringView formulaBegins = u"=+-@\t\r";
    QString written = text;
    if (!written.isEmpty() && formulaBegins.contains(written.front()))
        written.prepend(QLatin1Char('\''));
    const bool quoted = written.contains(QLatin1Char(',')) || written.contains(QLatin1Char('"')) ||
                        written.contains(QLatin1Char('\n')) || written.contains(QLatin1Char('\r'));
    if (!quoted)
        return written;
    return QLatin1Char('"') + written.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

QString line(const QStringList &fields)
{
    QString text;
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (i > 0)
            text += QLatin1Char(',');
        text += field(fields.at(i));
    }
    return text + QLatin1String("\r\n");
}

} // namespace csv

CsvWriter::CsvWriter(QString file, csv::Table table) : m_file(std::move(file)), m_table(std::move(table)) {}

void CsvWriter::work()
{
    m_outcome = write();
}

void CsvWriter::interrupt()
{
    if (m_table.stopWaiting)
        m_table.stopWaiting();
}

CsvWriter::Outcome CsvWriter::write()
{
    platform::NewFile file(m_file);
    bool fits = file.write(byteOrderMark); // otherwise place() says why
    QString text = csv::line(m_table.titles);
    for (QStringList row; fits && !stopRequested() && m_table.next(row); ++m_rows) {
        text += csv::line(row);
        if (text.size() >= writeAt) {
            fits = file.write(text.toUtf8());
            text.clear();
        }
    }
    if (stopRequested())
        return Outcome::Cancelled;
    file.write(text.toUtf8());
    return file.place(true, m_fileError) == platform::NewFile::Placed::Done ? Outcome::Written
                                                                            : Outcome::Failed;
}
