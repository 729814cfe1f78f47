// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/CsvExporter.h"

#include "core/CountText.h"
#include "platform/Dialogs.h"

#include <QDir>
#include <QWidget>

CsvExporter::CsvExporter(QWidget *page) : QObject(page), m_page(page), m_jobs(page) {}

void CsvExporter::start(const QString &suggestedName, const std::function<csv::Table()> &table)
{
    if (isRunning())
        return;
    const QPointer<CsvExporter> alive(this);
    const QString file = platform::dialogs().chooseFileToSave(m_page, tr("Export as CSV"),
                                                              suggestedName + QStringLiteral(".csv"),
                                                              tr("Comma-separated values (*.csv)"));
    if (!alive || file.isEmpty() || isRunning())
        return;
    csv::Table rows = table();
    if (!rows.next)
        return;
    emit started(tr("Exporting to %1 ...").arg(QDir::toNativeSeparators(file)));
    m_jobs.start({.busyText = tr("the export of a table")}, new CsvWriter(file, std::move(rows)),
                 [this](const CsvWriter &writer) { reportEnd(writer); });
}

void CsvExporter::reportEnd(const CsvWriter &writer)
{
    const QString file = QDir::toNativeSeparators(writer.file());
    switch (writer.outcome()) {
    case CsvWriter::Outcome::Failed:
        emit ended(NoticeBar::Kind::Error, tr("%1 could not be written: %2").arg(file, writer.reason()));
        break;
    case CsvWriter::Outcome::Cancelled:
        emit ended(NoticeBar::Kind::Info, tr("The export was cancelled; nothing was written."));
        break;
    default:
        emit ended(NoticeBar::Kind::Success, core::countText(writer.rows(), tr("1 row was exported to %2."),
                                                             tr("%1 rows were exported to %2."))
                                                 .arg(file));
    }
}
