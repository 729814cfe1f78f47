// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/BatchPage.h"

#include "platform/Dialogs.h"
#include "widgets/FLTableView.h"
#include "widgets/JobHost.h"
#include "widgets/NoticeBar.h"
#include "widgets/PageHeader.h"
#include "widgets/ResultView.h"
#include "widgets/Theme.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

enum Column { Name, Text, Result, columnTotal };

// The parsed list, or why it could not be read.
struct ReadList {
    qr::BatchList list;
    QString error;
};

ReadList readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {{}, file.errorString()};
    return {qr::parseBatch(file.read(qr::maxBatchBytes + 1)), {}};
}

} // namespace

void QRCodeBatchModel::setRows(QList<qr::BatchRow> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    m_results.clear();
    endResetModel();
}

void QRCodeBatchModel::setResults(QList<qr::Saved> results)
{
    beginResetModel();
    m_results = std::move(results);
    endResetModel();
}

int QRCodeBatchModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int QRCodeBatchModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : columnTotal;
}

QVariant QRCodeBatchModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    const qr::BatchRow &row = m_rows.at(index.row());
    switch (index.column()) {
    case Name:
        return row.name;
    case Text:
        return role == Qt::ToolTipRole ? QVariant() : QVariant(row.text.simplified());
    default:
        return index.row() < m_results.size() ? m_results.at(index.row()).text() : QString();
    }
}

QVariant QRCodeBatchModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return QStringList{tr("Name"), tr("Text"), tr("Result")}.value(section);
}

QRCodeBatchPage::QRCodeBatchPage(JobHost *jobs, ScanPage *progress, std::function<qr::Style()> style,
                                 QWidget *parent)
    : QWidget(parent),
      m_jobs(jobs),
      m_progress(progress),
      m_style(std::move(style)),
      m_model(new QRCodeBatchModel(this))
{
    buildPage();
}

void QRCodeBatchPage::buildPage()
{
    auto *page = new QVBoxLayout(this);
    page->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    page->setSpacing(theme::space);
    auto *header = new PageHeader(PageHeader::Kind::Result, this);
    header->setTitle(tr("Many Codes at Once"));
    header->setText(tr("From a CSV file: a text in the first column, the name of its file in the second"));
    header->showBack(tr("Back to one code"));
    auto *choose =
        header->addButton({"chooseListButton", "FolderOpen24", tr("Choose List..."), {}, QKeySequence::Open});
    m_format = new QComboBox(this);
    m_format->setObjectName(QStringLiteral("batchFormatComboBox"));
    m_format->setAccessibleName(tr("Format"));
    m_format->addItems({tr("PNG files"), tr("SVG files"), tr("PDF files")});
    header->addWidget(m_format);
    m_create = header->addButton({"createAllButton", "Save24", tr("Create All")}, controls::Rank::Primary);
    m_create->setEnabled(false);
    m_notice = new NoticeBar(this);
    m_table = new ResultTable(QStringLiteral("batchTableView"), tr("QR codes"), this);
    m_table->setModel(m_model);
    m_table->setEmpty(controls::image("QRCode48"), tr("No list yet"),
                      tr("Each row of the list becomes a file, in the design of the page before."));
    m_table->table()->setSortingEnabled(false); // keeps list order
    m_table->table()->setTextElideMode(Qt::ElideRight);
    QHeaderView *columns = m_table->table()->horizontalHeader();
    columns->setSectionResizeMode(Text, QHeaderView::Stretch);
    columns->resizeSection(Name, 160);
    columns->resizeSection(Result, 320);
    page->addWidget(header);
    page->addWidget(m_notice);
    page->addWidget(m_table, 1);
    connect(header, &PageHeader::back, this, &QRCodeBatchPage::back);
    connect(choose, &QPushButton::clicked, this, &QRCodeBatchPage::chooseList);
    connect(m_create, &QPushButton::clicked, this, &QRCodeBatchPage::create);
    connect(m_table, &ResultView::told, m_notice,
            [this](NoticeBar::Kind kind, const QString &text) { m_notice->showNotice(kind, text); });
}

void QRCodeBatchPage::chooseList()
{
    const QStringList files = platform::dialogs().chooseFilesToOpen(
        window(), tr("Choose a List"), {}, tr("Lists (*.csv *.txt *.tsv);;All Files (*)"));
    if (!files.isEmpty())
        readList(files.first());
}

void QRCodeBatchPage::readList(const QString &file)
{
    if (m_jobs->isBusy())
        return;
    emit jobStarted();
    m_jobs->run(
        {.busyText = tr("reading the list"),
         .page = m_progress,
         .title = tr("Reading the list ..."),
         .subject = file},
        [file](const core::JobControl &) { return readFile(file); },
        [this](auto &job) {
            const ReadList read = job.takeResult().value_or(ReadList{{}, job.error()});
            m_model->setRows(read.list.rows);
            m_create->setEnabled(!read.list.rows.isEmpty());
            m_notice->hide();
            if (!read.error.isEmpty())
                m_notice->showNotice(NoticeBar::Kind::Error,
                                     tr("The list cannot be read: %1").arg(read.error));
            else if (read.list.tooLong)
                m_notice->showNotice(NoticeBar::Kind::Error,
                                     tr("The list is too long: %1 rows at most.").arg(qr::maxBatchRows));
            else if (read.list.rows.isEmpty())
                m_notice->showNotice(NoticeBar::Kind::Warning, tr("There is no text in the first column."));
            emit jobEnded();
        });
}

void QRCodeBatchPage::create()
{
    if (m_jobs->isBusy())
        return;
    const QString folder = platform::dialogs().chooseFolder(window(), tr("Choose a Folder for the Codes"));
    if (folder.isEmpty() || m_jobs->isBusy())
        return;
    const qr::BatchOptions options{folder, static_cast<qr::Format>(m_format->currentIndex()), m_style()};
    emit jobStarted();
    m_jobs->run(
        {.busyText = tr("the creation of codes"),
         .page = m_progress,
         .title = tr("Creating QR codes ..."),
         .subject = folder},
        [rows = m_model->rows(), options](const core::JobControl &job) {
            return qr::saveAll(rows, options, job.progress, job.cancel);
        },
        [this](auto &job) {
            const QString error = job.error();
            showEnd(job.takeResult().value_or(QList<qr::Saved>()), job.stopRequested());
            if (!error.isEmpty())
                m_notice->showNotice(NoticeBar::Kind::Error, error);
            emit jobEnded();
        });
}

void QRCodeBatchPage::showEnd(QList<qr::Saved> results, bool cancelled)
{
    const auto written = std::ranges::count(results, qr::Saved::Outcome::Written, &qr::Saved::outcome);
    const bool all = written == results.size();
    const QString text = tr("%1 of %2 codes were saved and read back.").arg(written).arg(results.size());
    m_model->setResults(std::move(results));
    m_notice->showNotice(all ? NoticeBar::Kind::Success : NoticeBar::Kind::Warning,
                         cancelled ? tr("Cancelled. %1").arg(text) : text);
    if (!all && !cancelled)
        m_jobs->keepOpen();
}
