// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageForm.h"

#include "FindDuplicateImage/FindDuplicateImageNoResultFoundForm.h"
#include "FindDuplicateImage/FindDuplicateImageResultForm.h"
#include "FindDuplicateImage/FindDuplicateImageScanInfoForm.h"
#include "FindDuplicateImage/FindDuplicateImageStartForm.h"
#include "imaging/DecoderPool.h"
#include "imaging/ThumbnailFile.h"
#include "platform/DetachedThread.h"
#include "platform/Processors.h"
#include "platform/Win32Enumerator.h"
#include "widgets/NoticeBar.h"

#include <QDir>

#include <algorithm>
#include <utility>

namespace
{

// More do not help: disk bandwidth and the memory limit for images are shared.
constexpr int maxDecoders = 8;

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

void FindDuplicateImageForm::clearLeftovers()
{
    platform::runDetached([folder = QDir::tempPath()] { imaging::ThumbnailFile::clearLeftovers(folder); });
}

FindDuplicateImageForm::FindDuplicateImageForm(QWidget *parent)
    : FindDuplicateImageForm(windowsTools(), parent)
{
}

FindDuplicateImageForm::FindDuplicateImageForm(Tools tools, QWidget *parent)
    : ScanForm(new FindDuplicateImageScanInfoForm, parent),
      m_tools(std::move(tools)),
      m_start(new FindDuplicateImageStartForm(this)),
      m_results(new FindDuplicateImageResultForm(this)),
      m_noResult(new FindDuplicateImageNoResultFoundForm(this))
{
    buildPages();
    connectPages();
}

FindDuplicateImageForm::~FindDuplicateImageForm()
{
    m_jobs.drop(); // it works with the decoders
    m_results->clear();
}

void FindDuplicateImageForm::buildPages()
{
    for (QWidget *page : std::initializer_list<QWidget *>{m_start, m_results, m_noResult})
        m_pages->addWidget(page);
    m_pages->setCurrentWidget(m_start);
}

void FindDuplicateImageForm::connectPages()
{
    connect(m_start, &FindDuplicateImageStartForm::folderChosen, this, &FindDuplicateImageForm::scan);
    connect(m_start, &DropFrame::othersLeftOut, this,
            [this](const QString &notice) { m_resultNotice = notice; });
    connect(m_results, &FindDuplicateImageResultForm::prepareReportUpdatePath, this,
            &FindDuplicateImageForm::onPrepareReportUpdatePath);
    connect(m_results, &FindDuplicateImageResultForm::resultReady, this,
            &FindDuplicateImageForm::OnResultReady);
    connect(m_results, &FindDuplicateImageResultForm::backToMain, this,
            &FindDuplicateImageForm::OnBackToMain);
    connect(m_noResult, &FindDuplicateImageNoResultFoundForm::noResult_backToMain, this,
            &FindDuplicateImageForm::OnNoResult_backToMain);
}

void FindDuplicateImageForm::scan(const QString &folder)
{
    if (isBusy() || folder.isEmpty())
        return;
    m_results->clear();
    m_root = shownRoot(folder);
    m_start->notice()->hide(); // it refers to an earlier scan
    m_resultNotice.clear();
    m_decoders = m_tools.decoders();
    m_thumbnails = std::make_shared<imaging::ThumbnailFile>(m_tools.temporaryFolder);
    m_scan = new FindDuplicateImageThread(makeJob(m_root));
    startScan(tr("Scanning in progress. Please wait ..."), tr("Stopping the scan ..."),
              tr("the search for duplicate images"), m_scan, [this](const auto &) { onScanFinish(); });
}

ImageScanJob FindDuplicateImageForm::makeJob(const QString &root) const
{
    ImageScanJob job;
    job.root = root;
    job.options.readAheadThreads = 1;
    job.options.decodeThreads = std::min(platform::osIdleCores() + 1, maxDecoders);
    job.enumerator = m_tools.enumerator();
    job.decoders = m_decoders;
    job.thumbnails = m_thumbnails;
    return job;
}

void FindDuplicateImageForm::onScanFinish()
{
    FindDuplicateImageThread *scan = std::exchange(m_scan, nullptr);
    if (!scan)
        return;
    m_decoders->rest();
    if (scan->stopRequested() || !scan->error().isEmpty()) {
        showStartPage(failureText(scan->error()));
        return;
    }
    m_progress->setTitle(tr("Preparing report. Please wait..."));
    lookalikes::ScanResult result = scan->takeResult();
    ImageReport report;
    report.root = m_root;
    report.groups = std::move(result.groups);
    report.imagesCompared = result.imagesCompared;
    report.placeholders = result.placeholders;
    report.foldersUnread = result.foldersUnread;
    report.imagesLost = m_decoders->lost();
    report.decodedHere = m_decoders->usesThisProcess();
    report.decoders = std::exchange(m_decoders, {});
    report.thumbnails = std::exchange(m_thumbnails, {});
    m_results->prepare(std::move(report));
}

void FindDuplicateImageForm::onPrepareReportUpdatePath(QString path)
{
    m_progress->setPath(path);
}

void FindDuplicateImageForm::OnResultReady()
{
    if (m_results->report().groups.empty()) {
        m_noResult->showScan(m_results->report(), m_resultNotice);
        m_results->clear();
        m_pages->setCurrentWidget(m_noResult);
        emit noResultShown();
        return;
    }
    if (!m_resultNotice.isEmpty())
        m_results->showNotice(NoticeBar::Kind::Warning, m_resultNotice);
    m_pages->setCurrentWidget(m_results);
    m_results->setFocus();
    emit resultsShown();
}

// The result, which may have taken hours, is kept until the next scan.
void FindDuplicateImageForm::OnBackToMain()
{
    leaveResult(m_start, m_results);
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
        m_start->notice()->showNotice(NoticeBar::Kind::Warning, notice);
    m_pages->setCurrentWidget(m_start);
    emit startPageShown();
}
