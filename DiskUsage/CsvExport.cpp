// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/CsvExport.h"

#include <QSaveFile>

namespace
{
constexpr qsizetype writeAt = 1 << 16; // characters collected before they are written
constexpr char byteOrderMark[] = "\xEF\xBB\xBF";
} // namespace

namespace diskusage
{

void CsvTable::setRows(QList<QStringList> rows)
{
    next = [rows = std::move(rows), at = qsizetype(0)](QStringList &row) mutable {
        if (at == rows.size())
            return false;
        row = rows.at(at++);
        return true;
    };
}

QString csvField(const QString &text)
{
    constexpr QStringView formulaBegins = u"=+-@\t\r";
    QString field = text;
    if (!field.isEmpty() && formulaBegins.contains(field.front()))
        field.prepend(QLatin1Char('\''));
    const bool quoted = field.contains(QLatin1Char(',')) || field.contains(QLatin1Char('"')) ||
                        field.contains(QLatin1Char('\n')) || field.contains(QLatin1Char('\r'));
    if (!quoted)
        return field;
    return QLatin1Char('"') + field.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

QString csvLine(const QStringList &fields)
{
    QString line;
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (i > 0)
            line += QLatin1Char(',');
        line += csvField(fields.at(i));
    }
    return line + QLatin1String("\r\n");
}

} // namespace diskusage

CsvExportThread::CsvExportThread(QString file, diskusage::CsvTable table)
    : m_file(std::move(file)),
      m_table(std::move(table))
{
}

void CsvExportThread::work()
{
    m_outcome = write();
}

CsvExportThread::Outcome CsvExportThread::write()
{
    QSaveFile file(m_file);
    const auto failed = [this, &file] {
        m_fileError = file.errorString();
        return Outcome::Failed;
    };
    // Anything short of commit() leaves the old file as it was.
    if (!file.open(QIODevice::WriteOnly))
        return failed();
    file.write(byteOrderMark);
    QString text = diskusage::csvLine(m_table.titles);
    for (QStringList row; !stopRequested() && m_table.next(row); ++m_rows) {
        text += diskusage::csvLine(row);
        if (text.size() >= writeAt) {
            file.write(text.toUtf8());
            text.clear();
        }
    }
    if (stopRequested())
        return Outcome::Cancelled;
    file.write(text.toUtf8());
    return file.commit() ? Outcome::Written : failed();
}
