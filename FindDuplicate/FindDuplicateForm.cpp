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

#include <QStackedLayout>
#include <QThreadPool>

#include <algorithm>
#include <utility>

using Groups = std::vector<duplicates::DuplicateGroup>;

namespace
{

// Destroying a million records takes longer than the interface may wait.
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
    : FLWidget(parent),
      m_enumerators(std::move(enumerators)),
      m_settings(duplicates::defaultFinderSettings()),
      m_groups(std::make_shared<Groups>()),
      m_pages(new QStackedLayout(this)),
      m_start(new FindDuplicateStartForm(this))
{
    duplicates::reloadFinderSettings(m_settings);
    m_pages->addWidget(m_start);
    showScope();
    connect(m_start, &FindDuplicateStartForm::folderChosen, this, &FindDuplicateForm::scan);
    connect(m_start, &DropFrame::othersLeftOut, this,
            [this](const QString &notice) { m_resultNotice = notice; });
    connect(m_start, &FindDuplicateStartForm::optionsRequested, this, &FindDuplicateForm::showOptions);
    connect(&m_relay, &core::ProgressRelay::changed, this, &FindDuplicateForm::showProgress);
}

// The scan goes before the relay that it talks to.
FindDuplicateForm::~FindDuplicateForm()
{
    m_thread.reset();
}

bool FindDuplicateForm::isBusy() const
{
    return isScanning() || (m_results && m_results->isBusy());
}

void FindDuplicateForm::requestStop()
{
    m_closeRequested = isBusy();
    handleScanCancel();
    if (m_results)
        m_results->requestStop();
}

QString FindDuplicateForm::busyText() const
{
    if (isScanning())
        return tr("the search for duplicates");
    return m_results ? m_results->busyText() : QString();
}

template <class Page>
void FindDuplicateForm::dropPage(Page *&page)
{
    if (!page)
        return;
    page->disconnect(this);
    m_pages->removeWidget(page);
    page->hide();
    page->deleteLater(); // its signal may be the one that is being handled
    page = nullptr;
}

void FindDuplicateForm::scan(const QString &folder)
{
    if (isScanning() || (m_results && m_results->isRemoving()) || folder.isEmpty())
        return;
    // At once: it shares the groups, which are to go on another thread.
    delete std::exchange(m_results, nullptr);
    destroyInBackground(std::exchange(m_groups, std::make_shared<Groups>()));
    duplicates::reloadFinderSettings(m_settings);
    m_root = core::walkRoot(folder);
    m_start->hideNotice(); // it was about an earlier scan
    m_resultNotice.clear();
    m_cancelRequested = false;
    m_closeRequested = false;
    m_stepsShown = 0;
    m_totalShown = false;

    dropPage(m_progress);
    m_progress = new ScanInfoForm(this);
    connect(m_progress, &ScanInfoForm::scanCancel, this, &FindDuplicateForm::handleScanCancel);
    m_pages->addWidget(m_progress);
    m_pages->setCurrentWidget(m_progress);
    m_progress->begin(tr("Searching in progress. Please wait ..."), m_root);
    startThread(m_root);
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

void FindDuplicateForm::startThread(const QString &root)
{
    m_thread.reset(new FindDuplicateThread(makeJob(root)));
    FindDuplicateThread *thread = m_thread.get();
    connect(thread, &FindDuplicateThread::scanFinish, this, &FindDuplicateForm::onScanFinish);
    // These come by the hundred thousand; the relay passes on what a person can follow.
    connect(thread, &FindDuplicateThread::updateScanProgress, &m_relay, &core::ProgressRelay::addStep,
            Qt::DirectConnection);
    connect(thread, &FindDuplicateThread::updatePath, &m_relay, &core::ProgressRelay::setPath,
            Qt::DirectConnection);
    connect(thread, &FindDuplicateThread::updateTotalSubFolder, &m_relay, &core::ProgressRelay::setTotalSteps,
            Qt::DirectConnection);
    connect(thread, &FindDuplicateThread::updateTotalItemScan, &m_relay, &core::ProgressRelay::setItems,
            Qt::DirectConnection);
    m_relay.restart();
    emit showToolbarSignal(false);
    thread->start();
}

void FindDuplicateForm::showProgress(const core::ScanProgress &progress)
{
    if (!m_thread || !m_progress)
        return;
    if (!progress.path.isEmpty())
        handleUpdatePath(progress.path);
    if (progress.totalSteps > 0 && !std::exchange(m_totalShown, true))
        handleUpdateTotalSubFolder(progress.totalSteps);
    for (; m_stepsShown < progress.steps; ++m_stepsShown)
        handleUpdateScanProgress();
    handleUpdateTotalItemScan(progress.items);
}

void FindDuplicateForm::handleUpdatePath(const QString &path)
{
    if (m_progress)
        m_progress->setPath(path);
}

void FindDuplicateForm::handleUpdateScanProgress()
{
    if (m_progress)
        m_progress->addStep();
}

void FindDuplicateForm::handleUpdateTotalSubFolder(int total)
{
    if (m_progress)
        m_progress->setTotalSteps(total);
}

void FindDuplicateForm::handleUpdateTotalItemScan(int totalItem)
{
    if (m_progress)
        m_progress->setItems(totalItem);
}

void FindDuplicateForm::handleScanCancel()
{
    if (!m_thread)
        return;
    m_cancelRequested = true;
    m_thread->requestStop();
    m_progress->showStopping(tr("Stopping the search ..."));
}

void FindDuplicateForm::onScanFinish()
{
    if (!m_thread)
        return;
    m_relay.finish();
    const QString error = m_thread->error();
    duplicates::ScanResult result = m_thread->takeResult();
    m_thread.reset();
    emit showToolbarSignal(true);
    if (m_cancelRequested || !error.isEmpty()) {
        destroyInBackground(std::make_shared<Groups>(std::move(result.groups)));
        m_root.clear();
        showStartPage(error);
        if (m_closeRequested)
            emit closeApp();
        return;
    }
    m_groups = std::make_shared<Groups>(std::move(result.groups));
    m_filesCompared = result.filesCompared;
    m_foldersUnread = result.foldersUnread;
    prepareReport();
}

void FindDuplicateForm::prepareReport()
{
    m_progress->complete();
    m_progress->setTitle(tr("Preparing report. Please wait..."));
    m_results = new FindDuplicateResultForm(m_root, m_groups, m_foldersUnread, this);
    connect(m_results, &FindDuplicateResultForm::backToMain, this, &FindDuplicateForm::OnBackToMain);
    connect(m_results, &FindDuplicateResultForm::resultReady, this, &FindDuplicateForm::OnResultReady);
    connect(m_results, &FindDuplicateResultForm::showToolbarSignal, this,
            &FindDuplicateForm::showToolbarSignal);
    connect(m_results, &FindDuplicateResultForm::jobEnded, this, &FindDuplicateForm::onJobEnded);
    m_pages->addWidget(m_results);
    if (!m_results->start()) {
        delete std::exchange(m_results, nullptr);
        showNoResult();
    }
}

void FindDuplicateForm::OnResultReady()
{
    if (!m_resultNotice.isEmpty())
        m_results->showNotice(m_resultNotice);
    m_pages->setCurrentWidget(m_results);
    dropPage(m_progress);
    emit resultsShown();
}

// What the user should see before the window closes keeps it open.
void FindDuplicateForm::onJobEnded(bool hasNews)
{
    if (!std::exchange(m_closeRequested, false) || hasNews)
        return;
    // Later: a job that ends at once does so while the window is still refusing to close.
    QMetaObject::invokeMethod(this, &FLWidget::closeApp, Qt::QueuedConnection);
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
    dropPage(m_progress);
    emit noResultShown();
}

void FindDuplicateForm::OnBackToMain()
{
    if (m_results && m_results->isRemoving())
        return;
    if (m_results)
        m_results->requestStop(); // of a comparison that nobody waits for any more
    showStartPage();
}

void FindDuplicateForm::OnNoResult_backToMain()
{
    showStartPage();
}

void FindDuplicateForm::showStartPage(const QString &notice)
{
    if (!notice.isEmpty())
        m_start->showNotice(notice);
    m_pages->setCurrentWidget(m_start);
    dropPage(m_progress);
    dropPage(m_noResult);
    emit startPageShown();
}

void FindDuplicateForm::showScope()
{
    const auto selected =
        std::count_if(m_settings.categories.cbegin(), m_settings.categories.cend(),
                      [](const duplicates::SelectableCategory &category) { return category.selected; });
    m_start->showScope(tr("%1 of %2 file types are searched for.")
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
