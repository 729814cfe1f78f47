// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/CsvExporter.h"

#include "platform/Dialogs.h"

#include <QDir>
#include <QWidget>

CsvExporter::CsvExporter(QWidget *page) : QObject(page), m_page(page) {}

CsvExporter::~CsvExporter() = default;

void CsvExporter::start(const QString &suggestedName, const std::function<csv::Table()> &table)
{
    if (m_thread)
        return;
    const QPointer<CsvExporter> alive(this);
    const QString file = platform::dialogs().chooseFileToSave(m_page, tr("Export as CSV"),
                                                              suggestedName + QStringLiteral(".csv"),
                                                              tr("Comma-separated values (*.csv)"));
    if (!alive || file.isEmpty() || m_thread)
        return;
    csv::Table rows = table();
    if (!rows.next)
        return;
    m_thread.reset(new CsvWriter(file, std::move(rows)));
    connect(m_thread.get(), &QThread::finished, this, &CsvExporter::tellEnd);
    emit started(tr("Exporting to %1 ...").arg(QDir::toNativeSeparators(file)));
    m_thread->start();
}

void CsvExporter::tellEnd()
{
    if (!m_thread)
        return;
    const core::WorkerPointer<CsvWriter> ended = std::move(m_thread);
    const QString file = QDir::toNativeSeparators(ended->file());
    switch (ended->outcome()) {
    case CsvWriter::Outcome::Failed:
        emit this->ended(NoticeBar::Kind::Error, tr("%1 could not be written: %2").arg(file, ended->error()));
        break;
    case CsvWriter::Outcome::Cancelled:
        emit this->ended(NoticeBar::Kind::Info, tr("The export was cancelled; nothing was written."));
        break;
    default:
        emit this->ended(NoticeBar::Kind::Success,
                         tr("%1 rows were exported to %2.").arg(QString::number(ended->rows()), file));
    }
}

void CsvExporter::requestStop()
{
    if (m_thread)
        m_thread->requestStop();
}
