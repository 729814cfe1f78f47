// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateForm.h"

#include "FindDuplicate/FindDuplicateNoResultFoundForm.h"
#include "FindDuplicate/FindDuplicateOptionsDialog.h"
#include "FindDuplicate/FindDuplicateResultForm.h"
#include "FindDuplicate/FindDuplicateStartForm.h"
#include "FindDuplicate/ScanInfoForm.h"
#include "core/CountText.h"
#include "core/FolderWalk.h"
#include "platform/Processors.h"
#include "platform/Win32Enumerator.h"
#include "widgets/NoticeBar.h"

#include <QThreadPool>

#include <algorithm>
#include <utility>

using Groups = std::vector<duplicates::DuplicateGroup>;

namespace
{

// Destroying a million records takes too long for the interface thread.
void destroyInBackground(std::shared_ptr<Groups> groups)
{
    if (!groups->empty())
        QThreadPool::globalInstance()->start([kept = std::move(groups)]() mutable { kept.reset(); });
}

} // namespace

FindDuplicateForm::FindDuplicateForm(QWidget *parent)
    : FindDuplicateForm([] { return std::make_unique<platform::Win32Enumerator>(); }, parent)
{
}

FindDuplicateForm::FindDuplicateForm(EnumeratorFactory enumerators, QWidget *parent)
    : ScanForm(new ScanInfoForm, parent),
      m_enumerators(std::move(enumerators)),
      m_settings(duplicates::defaultFinderSettings()),
      m_groups(std::make_shared<Groups>()),
      m_start(new FindDuplicateStartForm(this))
{
    duplicates::reloadFinderSettings(m_settings);
    m_pages->addWidget(m_start);
    m_pages->setCurrentWidget(m_start);
    showScope();
    connect(m_start, &FindDuplicateStartForm::folderChosen, this, &FindDuplicateForm::scan);
    connect(m_start, &DropFrame::othersLeftOut, this,
            [this](const QString &notice) { m_resultNotice = notice; });
    connect(m_start, &FindDuplicateStartForm::optionsRequested, this, &FindDuplicateForm::showOptions);
}

template <class Page>
void FindDuplicateForm::dropPage(Page *&page)
{
    if (!page)
        return;
    page->disconnect(this);
    m_pages->removeWidget(page);
    page->hide();
    page->deleteLater(); // this may be called by one of its signals
    page = nullptr;
}

void FindDuplicateForm::scan(const QString &folder)
{
    if (isScanning() || (m_results && m_results->isRemoving()) || folder.isEmpty())
        return;
    // Deleted at once, since it shares ownership of the groups, which must be destroyed on another thread.
    delete std::exchange(m_results, nullptr);
    destroyInBackground(std::exchange(m_groups, std::make_shared<Groups>()));
    duplicates::reloadFinderSettings(m_settings);
    m_root = core::walkRoot(folder);
    m_start->notice()->hide(); // it refers to an earlier scan
    m_resultNotice.clear();
    m_thread = new FindDuplicateThread(makeJob(m_root));
    startScan(tr("Searching in progress. Please wait ..."), tr("Stopping the search ..."),
              tr("the search for duplicates"), m_thread, [this](const auto &) { onScanFinish(); });
}

FindDuplicateJob FindDuplicateForm::makeJob(const QString &root)
{
    FindDuplicateJob job;
    job.root = root;
    job.options.categories = m_settings.categories;
    job.options.smallFileSize = m_settings.smallFileSize;
    job.options.readAheadThreads = platform::osIdleCores();
    job.enumerator = m_enumerators();
    return job;
}

void FindDuplicateForm::onScanFinish()
{
    FindDuplicateThread *thread = std::exchange(m_thread, nullptr);
    if (!thread)
        return;
    duplicates::ScanResult result = thread->takeResult();
    if (thread->stopRequested() || !thread->error().isEmpty()) {
        destroyInBackground(std::make_shared<Groups>(std::move(result.groups)));
        m_root.clear();
        showStartPage(failureText(thread->error()));
        return;
    }
    m_groups = std::make_shared<Groups>(std::move(result.groups));
    m_filesCompared = result.filesCompared;
    m_foldersUnread = result.foldersUnread;
    prepareReport();
}

void FindDuplicateForm::prepareReport()
{
    m_progress->setTitle(tr("Preparing report. Please wait..."));
    m_results = new FindDuplicateResultForm(m_root, m_groups, m_foldersUnread, this);
    connect(m_results, &FindDuplicateResultForm::backToMain, this, &FindDuplicateForm::OnBackToMain);
    connect(m_results, &FindDuplicateResultForm::resultReady, this, &FindDuplicateForm::OnResultReady);
    m_pages->addWidget(m_results);
    if (!m_results->start()) {
        delete std::exchange(m_results, nullptr);
        showNoResult();
    }
}

void FindDuplicateForm::OnResultReady()
{
    if (!m_resultNotice.isEmpty())
        m_results->showNotice(NoticeBar::Kind::Warning, m_resultNotice);
    m_pages->setCurrentWidget(m_results);
    emit resultsShown();
}

void FindDuplicateForm::showNoResult()
{
    const QString folder = m_root.endsWith(QLatin1Char(':')) ? m_root + QLatin1Char('\\') : m_root;
    QString text = core::countText(m_filesCompared, tr("1 file of the selected types was compared in %2."),
                                   tr("%1 files of the selected types were compared in %2."))
                       .arg(folder);
    if (m_foldersUnread > 0)
        text += QLatin1Char('\n') + core::countText(m_foldersUnread, tr("1 folder could not be read."),
                                                    tr("%1 folders could not be read."));
    if (!m_resultNotice.isEmpty())
        text += QLatin1Char('\n') + m_resultNotice;
    m_noResult = new FindDuplicateNoResultFoundForm(text, this);
    connect(m_noResult, &FindDuplicateNoResultFoundForm::noResult_backToMain, this,
            &FindDuplicateForm::OnNoResult_backToMain);
    m_pages->addWidget(m_noResult);
    m_pages->setCurrentWidget(m_noResult);
    emit noResultShown();
}

void FindDuplicateForm::OnBackToMain()
{
    if (!m_results) {
        showStartPage();
        return;
    }
    if (m_results->isRemoving())
        return;
    m_results->requestStop(); // of a comparison that is no longer needed
    leaveResult(m_start, m_results);
}

void FindDuplicateForm::OnNoResult_backToMain()
{
    showStartPage();
}

void FindDuplicateForm::showStartPage(const QString &notice)
{
    if (!notice.isEmpty())
        m_start->notice()->showNotice(NoticeBar::Kind::Warning, notice);
    m_pages->setCurrentWidget(m_start);
    dropPage(m_noResult);
    emit startPageShown();
}

void FindDuplicateForm::showScope()
{
    const auto selected =
        std::count_if(m_settings.categories.cbegin(), m_settings.categories.cend(),
                      [](const duplicates::SelectableCategory &category) { return category.selected; });
    m_start->setScope(tr("%1 of %2 file types are searched for.")
                          .arg(QString::number(selected), QString::number(m_settings.categories.size())));
}

void FindDuplicateForm::showOptions()
{
    duplicates::reloadFinderSettings(m_settings);
    auto *dialog = new FindDuplicateOptionsDialog(m_settings, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this] {
        duplicates::reloadFinderSettings(m_settings);
        showScope();
    });
    dialog->open();
}
