// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageForm.h"

#include "FindDuplicateImage/FindDuplicateImageNoResultFoundForm.h"
#include "FindDuplicateImage/FindDuplicateImageResultForm.h"
#include "FindDuplicateImage/FindDuplicateImageScanInfoForm.h"
#include "FindDuplicateImage/FindDuplicateImageStartForm.h"
#include "core/FolderWalk.h"
#include "imaging/DecoderPool.h"
#include "imaging/ThumbnailFile.h"
#include "platform/Processors.h"
#include "platform/Win32Enumerator.h"

#include <QDir>
#include <QStackedLayout>

#include <algorithm>
#include <utility>

namespace
{

// More do not pay: the disk and the memory that is allowed for pictures are shared.
constexpr int mostDecoders = 8;

// The form in which a folder is shown: "C:\\", "C:\\x".
QString shownRoot(const QString &chosen)
{
    const QString root = core::walkRoot(chosen);
    return root.endsWith(QLatin1Char(':')) ? root + QLatin1Char('\\') : root;
}

} // namespace

FindDuplicateImageForm::Tools FindDuplicateImageForm::windowsTools()
{
    return {[] { return std::make_unique<platform::Win32Enumerator>(); },
            [] {
                return std::make_shared<imaging::DecoderPool>(
                    imaging::DecoderPool::Options{imaging::DecoderPool::decoderProgram()});
            },
            QDir::tempPath()};
}

FindDuplicateImageForm::FindDuplicateImageForm(QWidget *parent)
    : FindDuplicateImageForm(windowsTools(), parent)
{
}

FindDuplicateImageForm::FindDuplicateImageForm(Tools tools, QWidget *parent)
    : FLWidget(parent),
      m_tools(std::move(tools)),
      m_pages(new QStackedLayout(this)),
      m_start(new FindDuplicateImageStartForm(this)),
      m_scanInfo(new FindDuplicateImageScanInfoForm(this)),
      m_results(new FindDuplicateImageResultForm(this)),
      m_noResult(new FindDuplicateImageNoResultFoundForm(this))
{
    buildPages();
    connectPages();
}

FindDuplicateImageForm::~FindDuplicateImageForm()
{
    m_scan.reset();
    // Before the relays, which its worker thread talks to.
    m_results->clear();
}

void FindDuplicateImageForm::buildPages()
{
    for (QWidget *page : {static_cast<QWidget *>(m_start), static_cast<QWidget *>(m_scanInfo),
                          static_cast<QWidget *>(m_results), static_cast<QWidget *>(m_noResult)})
        m_pages->addWidget(page);
}

void FindDuplicateImageForm::connectPages()
{
    connect(m_start, &FindDuplicateImageStartForm::folderChosen, this, &FindDuplicateImageForm::scan);
    connect(m_start, &DropFrame::othersLeftOut, this,
            [this](const QString &notice) { m_resultNotice = notice; });
    connect(m_scanInfo, &FindDuplicateImageScanInfoForm::scanCancel, this,
            &FindDuplicateImageForm::handleScanCancel);
    connect(m_results, &FindDuplicateImageResultForm::prepareReportUpdatePath, &m_reportRelay,
            &core::ProgressRelay::setPath, Qt::DirectConnection);
    connect(m_results, &FindDuplicateImageResultForm::resultReady, this,
            &FindDuplicateImageForm::OnResultReady);
    connect(m_results, &FindDuplicateImageResultForm::backToMain, this,
            &FindDuplicateImageForm::OnBackToMain);
    connect(m_results, &FindDuplicateImageResultForm::removingChanged, this,
            [this](bool removing) { emit showToolbarSignal(!removing); });
    connect(m_results, &FindDuplicateImageResultForm::removalEnded, this,
            &FindDuplicateImageForm::onRemovalEnded);
    connect(m_noResult, &FindDuplicateImageNoResultFoundForm::noResult_backToMain, this,
            &FindDuplicateImageForm::OnNoResult_backToMain);
    connect(&m_relay, &core::ProgressRelay::changed, this, &FindDuplicateImageForm::showProgress);
    connect(&m_reportRelay, &core::ProgressRelay::changed, this,
            [this](const core::ScanProgress &progress) { onPrepareReportUpdatePath(progress.path); });
}

bool FindDuplicateImageForm::isBusy() const
{
    return m_scan || m_results->isPreparing() || m_results->isRemoving();
}

void FindDuplicateImageForm::requestStop()
{
    m_closeRequested = isBusy();
    handleScanCancel();
    m_results->requestStop(); // of a removal too
}

QString FindDuplicateImageForm::busyText() const
{
    if (m_results->isRemoving())
        return tr("the removal of a picture");
    return isBusy() ? tr("the search for duplicate images") : QString();
}

void FindDuplicateImageForm::scan(const QString &folder)
{
    if (isBusy() || folder.isEmpty())
        return;
    m_results->clear();
    m_root = shownRoot(folder);
    m_start->hideNotice(); // it was about an earlier scan
    m_resultNotice.clear();
    m_decoders = m_tools.decoders();
    m_thumbnails = std::make_shared<imaging::ThumbnailFile>(m_tools.temporaryFolder);
    m_scan.reset(new FindDuplicateImageThread(makeJob(m_root)));
    connectScan();
    m_cancelled = false;
    m_closeRequested = false;
    m_stepsShown = 0;
    m_totalShown = false;
    m_relay.restart();
    m_pages->setCurrentWidget(m_scanInfo);
    m_scanInfo->begin(m_root);
    emit showToolbarSignal(false);
    m_scan->start();
}

ImageScanJob FindDuplicateImageForm::makeJob(const QString &root) const
{
    ImageScanJob job;
    job.root = root;
    job.options.readAheadThreads = 1;
    job.options.decodeThreads = std::min(platform::osIdleCores() + 1, mostDecoders);
    job.enumerator = m_tools.enumerator();
    job.decoders = m_decoders;
    job.thumbnails = m_thumbnails;
    return job;
}

void FindDuplicateImageForm::connectScan()
{
    FindDuplicateImageThread *thread = m_scan.get();
    // These come by the hundred thousand; the relay passes on what a person can follow.
    connect(thread, &FindDuplicateImageThread::updatePath, &m_relay, &core::ProgressRelay::setPath,
            Qt::DirectConnection);
    connect(thread, &FindDuplicateImageThread::updateTotalSubFolder, &m_relay,
            &core::ProgressRelay::setTotalSteps, Qt::DirectConnection);
    connect(thread, &FindDuplicateImageThread::updateScanProgress, &m_relay, &core::ProgressRelay::addStep,
            Qt::DirectConnection);
    connect(thread, &FindDuplicateImageThread::updateTotalItemScan, &m_relay, &core::ProgressRelay::setItems,
            Qt::DirectConnection);
    connect(thread, &FindDuplicateImageThread::scanFinish, this, &FindDuplicateImageForm::onScanFinish);
}

void FindDuplicateImageForm::showProgress(const core::ScanProgress &progress)
{
    if (!m_scan)
        return;
    if (!progress.path.isEmpty())
        handleUpdatePath(progress.path);
    if (progress.totalSteps > 0 && !std::exchange(m_totalShown, true))
        handleUpdateTotalSubFolder(progress.totalSteps);
    for (; m_stepsShown < progress.steps; ++m_stepsShown)
        handleUpdateScanProgress();
    handleUpdateTotalItemScan(progress.items);
}

void FindDuplicateImageForm::handleUpdatePath(const QString &path)
{
    m_scanInfo->setPath(path);
}

void FindDuplicateImageForm::handleUpdateScanProgress()
{
    m_scanInfo->addStep();
}

void FindDuplicateImageForm::handleUpdateTotalSubFolder(int total)
{
    m_scanInfo->setTotalSteps(total);
}

void FindDuplicateImageForm::handleUpdateTotalItemScan(int totalItem)
{
    m_scanInfo->setItems(totalItem);
}

void FindDuplicateImageForm::handleScanCancel()
{
    if (!m_scan && !m_results->isPreparing())
        return;
    m_cancelled = true;
    if (m_scan)
        m_scan->requestStop();
    m_results->requestStop();
    m_scanInfo->showStopping();
}

void FindDuplicateImageForm::onScanFinish()
{
    if (!m_scan)
        return;
    m_relay.finish();
    const QString error = m_scan->error();
    lookalikes::ScanResult result = m_scan->takeResult();
    m_scan.reset();
    m_decoders->rest();
    if (m_cancelled || !error.isEmpty()) {
        endWithoutResult(error);
        return;
    }
    m_scanInfo->complete();
    m_scanInfo->showPreparing();
    m_reportRelay.restart();
    ImageReport report;
    report.root = m_root;
    report.groups = std::move(result.groups);
    report.imagesCompared = result.imagesCompared;
    report.placeholders = result.placeholders;
    report.foldersUnread = result.foldersUnread;
    report.decodedHere = m_decoders->usesThisProcess();
    report.decoders = std::exchange(m_decoders, {});
    report.thumbnails = std::exchange(m_thumbnails, {});
    m_results->prepare(std::move(report));
}

void FindDuplicateImageForm::onPrepareReportUpdatePath(QString path)
{
    m_scanInfo->setPath(path);
}

void FindDuplicateImageForm::OnResultReady()
{
    m_reportRelay.finish();
    if (m_cancelled) {
        endWithoutResult();
        return;
    }
    emit showToolbarSignal(true);
    if (m_results->report().groups.empty()) {
        m_noResult->showScan(m_results->report(), m_resultNotice);
        m_results->clear();
        m_pages->setCurrentWidget(m_noResult);
        emit noResultShown();
        return;
    }
    if (!m_resultNotice.isEmpty())
        m_results->warn(m_resultNotice);
    m_pages->setCurrentWidget(m_results);
    m_results->setFocus();
    emit resultsShown();
}

void FindDuplicateImageForm::endWithoutResult(const QString &notice)
{
    emit showToolbarSignal(true);
    showStartPage(notice);
    if (m_closeRequested)
        emit closeApp();
}

// What the user should see before the window closes keeps it open.
void FindDuplicateImageForm::onRemovalEnded(bool hasNews)
{
    if (!std::exchange(m_closeRequested, false) || hasNews)
        return;
    // Later: a look that is given up ends while the window is still refusing to close.
    QMetaObject::invokeMethod(this, &FLWidget::closeApp, Qt::QueuedConnection);
}

void FindDuplicateImageForm::OnBackToMain()
{
    showStartPage();
}

void FindDuplicateImageForm::OnNoResult_backToMain()
{
    showStartPage();
}

void FindDuplicateImageForm::showStartPage(const QString &notice)
{
    m_results->clear();
    m_decoders.reset();
    m_thumbnails.reset();
    if (!notice.isEmpty())
        m_start->showNotice(notice);
    m_pages->setCurrentWidget(m_start);
    emit startPageShown();
}
