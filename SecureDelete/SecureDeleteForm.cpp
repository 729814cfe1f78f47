// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/SecureDeleteForm.h"

#include "SecureDelete/FreeSpaceDialog.h"
#include "SecureDelete/FreeSpaceWipe.h"
#include "SecureDelete/SecureDeleteBinPage.h"
#include "SecureDelete/SecureDeleteListPage.h"
#include "SecureDelete/SecureDeleteOptionsDialog.h"
#include "SecureDelete/SecureDeleteReportPage.h"
#include "SecureDelete/Settings.h"
#include "SecureDelete/Texts.h"
#include "core/CountText.h"
#include "core/SizeText.h"
#include "platform/Dialogs.h"
#include "platform/RecycleBinFolders.h"
#include "widgets/DropFrame.h"
#include "widgets/FLTabWidget.h"
#include "widgets/PageHeader.h"
#include "widgets/ScanPage.h"
#include "widgets/Theme.h"

#include <QStackedLayout>
#include <QVBoxLayout>

using namespace securedelete;

SecureDeleteForm::Environment SecureDeleteForm::Environment::real()
{
    return {platform::mediumOf, platform::recycleBinFolders, [](const QString &drive) { return drive; }};
}

SecureDeleteForm::SecureDeleteForm(QWidget *parent) : SecureDeleteForm(Environment::real(), parent) {}

SecureDeleteForm::SecureDeleteForm(Environment environment, QWidget *parent)
    : FLWidget(parent),
      m_environment(std::move(environment)),
      m_pages(new QStackedLayout(this)),
      m_jobs(this)
{
    buildStartPage();
    buildProgressPage();
    connectAll();
    showMethod();
    m_freeSpace->removeLeftOver();
}

SecureDeleteForm::~SecureDeleteForm() = default;

void SecureDeleteForm::buildStartPage()
{
    m_startPage = new DropFrame(this);
    m_startPage->setAccepts(DropFrame::Accepts::Anything);
    m_startPage->setHint(tr("Drop files and folders to add them to the list"));
    auto *header = new PageHeader(PageHeader::Kind::Start, m_startPage);
    header->setTitle(tr("Secure Delete"));
    header->setText(tr("Completely and securely delete sensitive file from your hard drive"));
    QToolButton *wipe = header->addToolButton({"wipeFreeSpaceButton", "Drive24", tr("Wipe Free Space"),
                                               tr("Overwrite what was deleted before, on a whole drive")});
    QToolButton *options =
        header->addToolButton({"optionsButton", "Settings24", tr("Options"), tr("Method of overwriting")});
    connect(wipe, &QToolButton::clicked, this, &SecureDeleteForm::on_wipeFreeSpaceButton_clicked);
    connect(options, &QToolButton::clicked, this, &SecureDeleteForm::on_optionsButton_clicked);
    m_notice = new NoticeBar(m_startPage);
    m_tabs = new FLTabWidget(m_startPage);
    m_tabs->setObjectName(QStringLiteral("secureDeleteTabWidget"));
    m_list = new SecureDeleteListPage(m_environment.mediumOf, m_startPage);
    m_bin = new SecureDeleteBinPage(m_environment.binFolders, m_startPage);
    m_tabs->addTab(m_list, tr("Files && Folders"));
    m_tabs->addTab(m_bin, tr("Recycle Bin"));
    auto *layout = new QVBoxLayout(m_startPage);
    layout->setContentsMargins(theme::pageMargin, theme::spaceWide, theme::pageMargin, theme::pageMargin);
    layout->setSpacing(theme::space);
    layout->addWidget(header);
    layout->addWidget(m_notice);
    layout->addWidget(m_tabs, 1);
    m_pages->addWidget(m_startPage);
}

void SecureDeleteForm::buildProgressPage()
{
    using Figure = ScanPage::Figure;
    m_progress =
        new ScanPage(this, {Figure::Bytes, Figure::Items, Figure::Rate, Figure::Time, Figure::TimeLeft});
    connect(m_progress, &ScanPage::scanCancel, this, &SecureDeleteForm::handleScanCancel);
    m_pages->addWidget(m_progress);
    m_freeSpace = new FreeSpaceWipe(m_jobs, m_progress, m_environment.freeSpacePlace, this);
    connect(m_freeSpace, &FreeSpaceWipe::ended, this, &SecureDeleteForm::showFreeSpaceEnd);
}

void SecureDeleteForm::connectAll()
{
    connect(m_startPage, &DropFrame::pathsDropped, this, &SecureDeleteForm::addPaths);
    connect(m_list, &SecureDeleteListPage::deleteRequested, this, &SecureDeleteForm::on_deleteButton_clicked);
    const auto showText = [this](NoticeBar::Kind kind, const QString &notice) {
        m_notice->showNotice(kind, notice);
    };
    connect(m_list, &SecureDeleteListPage::told, this, showText);
    connect(m_bin, &SecureDeleteBinPage::told, this, showText);
    connect(m_bin, &SecureDeleteBinPage::deleteRequested, this, &SecureDeleteForm::deleteFromBin);
    constexpr int pause = 100; // ms
    m_removeDestroyed.setSingleShot(true);
    m_removeDestroyed.setInterval(pause);
    connect(&m_removeDestroyed, &QTimer::timeout, this, &SecureDeleteForm::removeDestroyed);
}

void SecureDeleteForm::addPaths(const QStringList &paths)
{
    m_notice->hide();
    m_tabs->setCurrentWidget(m_list);
    m_list->addPaths(paths);
}

void SecureDeleteForm::showMethod()
{
    m_settings = Settings::load();
    m_method = tr("%1, %2").arg(Texts::method(m_settings.method),
                                Texts::passes(m_settings.method, m_settings.randomPasses));
    if (m_settings.method != Method::Random)
        m_method = Texts::method(m_settings.method);
    m_list->showMethod(m_method);
}

void SecureDeleteForm::on_optionsButton_clicked()
{
    auto *dialog = new SecureDeleteOptionsDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::finished, this, &SecureDeleteForm::showMethod);
    dialog->open();
}

QString SecureDeleteForm::questionText(const QString &what, quint64 files, quint64 bytes) const
{
    QStringList lines;
    lines.append(tr("Delete %1 for good?").arg(what));
    lines.append(QString());
    lines.append(
        tr("%1, %2, overwritten %3.")
            .arg(core::countText(files, tr("1 file"), tr("%1 files")), core::sizeText(bytes), m_method));
    lines.append(tr("This cannot be undone."));
    return lines.join(u'\n');
}

// False while a job runs, or if the user says no.
bool SecureDeleteForm::mayStart(const QString &question)
{
    return !isBusy() && platform::dialogs().ask(this, tr("Secure Delete"), question) == QMessageBox::Yes &&
           !isBusy();
}

void SecureDeleteForm::on_deleteButton_clicked()
{
    if (m_list->isReading())
        return;
    showMethod(); // as it is stored now
    // A copy, so that exactly the items in the question are destroyed.
    const std::vector<ListRow> rows = m_list->model().rows();
    if (rows.empty())
        return;
    const ItemTotals totals = m_list->model().totals();
    quint64 files = 0, bytes = 0;
    std::size_t left = 0;
    for (const ListRow &row : rows) {
        const bool stays = row.willBeLeft(m_list->overwritesOtherNames());
        left += stays ? 1 : 0;
        files += stays ? 0 : row.files;
        bytes += stays ? 0 : row.bytes;
    }
    QString question =
        questionText(core::countText(rows.size(), tr("the item on the list"), tr("the %1 items on the list")),
                     files, bytes);
    if (left > 0)
        question += u'\n' + core::countText(left, tr("One item will be left, as its remark says."),
                                            tr("%1 items will be left, as their remarks say."));
    if (totals.remarks.testFlag(Remark::OtherNames) && m_list->overwritesOtherNames())
        question += u'\n' + tr("Files with other names lose their content under all of them.");
    if (!mayStart(question))
        return;
    SecureDeleteJob job;
    QList<int> ids;
    for (const ListRow &row : rows) {
        job.rows.push_back(row.row);
        ids.append(row.id);
    }
    job.bytes = totals.bytes;
    job.options.overwriteOtherNames = m_list->overwritesOtherNames();
    start(std::move(job), ids);
}

void SecureDeleteForm::deleteFromBin(bool all)
{
    const std::vector<BinRow> rows = all ? m_bin->allRows() : m_bin->selectedRows();
    if (rows.empty())
        return;
    showMethod();
    SecureDeleteJob job;
    job.mode = SecureDeleteJob::Mode::RecycleBin;
    quint64 files = 0;
    for (const BinRow &row : rows) {
        job.rows.push_back(row.content);
        job.indexes.push_back(row.index);
        job.shownPaths.insert(row.content.item.path(), row.shownPath());
        job.bytes += row.size;
        files += row.files;
    }
    const QString what = core::countText(rows.size(), tr("the item of the recycle bin"),
                                         tr("the %1 items of the recycle bin"));
    if (mayStart(questionText(what, files, job.bytes)))
        start(std::move(job), {});
}

void SecureDeleteForm::start(SecureDeleteJob job, QList<int> rowIds)
{
    job.options.method = m_settings.method;
    job.options.randomPasses = m_settings.randomPasses;
    m_rowIds = std::move(rowIds);
    m_steps = 0;
    m_notice->hide();
    auto *thread = new SecureDeleteThread(std::move(job), m_jobs.relay());
    connect(thread, &SecureDeleteThread::updateTotalProgress, this,
            &SecureDeleteForm::handleUpdateTotalProgress);
    connect(thread, &SecureDeleteThread::updateDeleteProgress, this,
            &SecureDeleteForm::handleUpdateDeleteProgress);
    connect(thread, &SecureDeleteThread::rowDestroyed, this, &SecureDeleteForm::onRowDestroyed);
    connect(thread, &SecureDeleteThread::deleteFinish, this, &SecureDeleteForm::onDeleteFinish);
    m_pages->setCurrentWidget(m_progress);
    const bool finishesFile = m_settings.method != Method::Gutmann;
    m_jobs.start({.busyText = tr("the deletion"),
                  .page = m_progress,
                  .title = tr("Deleting in progress. Please wait ..."),
                  .stoppingTitle =
                      finishesFile ? tr("Stopping. The file in hand is finished ...") : tr("Stopping ...")},
                 thread, [this](SecureDeleteThread &ended) { showReport(ended); });
}

void SecureDeleteForm::handleUpdateTotalProgress(int total)
{
    m_totalSteps = total;
    m_jobs.relay().setTotalSteps(total);
}

void SecureDeleteForm::handleUpdateDeleteProgress()
{
    m_jobs.relay().setSteps(++m_steps);
}

void SecureDeleteForm::handleScanCancel()
{
    m_jobs.cancel();
}

// Rows are removed in batches: each removal recounts the list, and small files finish by the thousand.
void SecureDeleteForm::onRowDestroyed(int row)
{
    if (row >= m_rowIds.size())
        return;
    m_destroyedIds.append(m_rowIds[row]);
    if (!m_removeDestroyed.isActive())
        m_removeDestroyed.start();
}

void SecureDeleteForm::removeDestroyed()
{
    m_removeDestroyed.stop();
    m_list->model().removeIds(std::exchange(m_destroyedIds, {}));
}

// The report is shown later, when the job host has released the thread.
void SecureDeleteForm::onDeleteFinish()
{
    m_steps = m_totalSteps;
    removeDestroyed();
}

void SecureDeleteForm::showReport(SecureDeleteThread &thread)
{
    if (!thread.error().isEmpty()) {
        showStartPage();
        m_notice->showNotice(NoticeBar::Kind::Error, thread.error());
        return;
    }
    delete m_report;
    m_report = new SecureDeleteReportPage(thread.takeResult(), m_method, this);
    connect(m_report, &SecureDeleteReportPage::back, this, &SecureDeleteForm::showStartPage);
    connect(m_report, &SecureDeleteReportPage::saveRequested, this, &SecureDeleteForm::saveReport);
    m_pages->addWidget(m_report);
    m_pages->setCurrentWidget(m_report);
    m_report->setFocus();
    emit reportShown();
}

void SecureDeleteForm::showStartPage()
{
    m_pages->setCurrentWidget(m_startPage);
    m_tabs->setFocus(); // the focused widget is hidden now; Ctrl+Tab works from the tab bar
    if (m_tabs->currentWidget() == m_bin)
        m_bin->refresh();
    emit startPageShown();
}

void SecureDeleteForm::saveReport(const QString &file, const ReportOptions &options)
{
    if (isBusy())
        return;
    m_jobs.run(
        {.busyText = tr("the saving of the report")},
        [file, options, records = m_report->records()](const core::JobControl &job) {
            return writeReport(file, records, options, job.cancel);
        },
        [this, file](auto &job) {
            const QString error = job.takeResult().value_or(job.error());
            m_report->showNotice(error.isEmpty(), error.isEmpty() ? tr("Saved as %1.").arg(file)
                                                                  : tr("Not saved: %1").arg(error));
        });
}

void SecureDeleteForm::on_wipeFreeSpaceButton_clicked()
{
    auto *dialog = new FreeSpaceDialog(this);
    // Queued, so that the dialog is closed before the question opens.
    connect(dialog, &FreeSpaceDialog::driveChosen, this, &SecureDeleteForm::wipeFreeSpace,
            Qt::QueuedConnection);
    dialog->open();
}

void SecureDeleteForm::wipeFreeSpace(const QString &drive, quint64 freeBytes)
{
    if (!mayStart(FreeSpaceWipe::question(drive, freeBytes)))
        return;
    m_notice->hide();
    m_pages->setCurrentWidget(m_progress);
    m_freeSpace->start(drive);
}

void SecureDeleteForm::showFreeSpaceEnd(NoticeBar::Kind kind, const QString &text)
{
    showStartPage();
    m_notice->showNotice(kind, text);
}
