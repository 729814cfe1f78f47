// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ScanForm.h"

#include "core/FolderWalk.h"
#include "widgets/NoticeBar.h"
#include "widgets/StartPage.h"

ScanForm::ScanForm(ScanPage *progress, QWidget *parent)
    : FLWidget(parent),
      m_pages(new QStackedLayout(this)),
      m_progress(progress),
      m_jobs(this)
{
    m_pages->addWidget(m_progress);
    connect(m_progress, &ScanPage::scanCancel, this, &ScanForm::handleScanCancel);
    m_showResult.setText(tr("Show Result"));
    connect(&m_showResult, &QAction::triggered, this, [this] {
        if (!m_leftResult)
            return;
        m_pages->setCurrentWidget(m_leftResult);
        m_leftResult->setFocus();
    });
}

void ScanForm::leaveResult(StartPage *start, QWidget *result)
{
    m_leftResult = result;
    start->notice()->showNotice(NoticeBar::Kind::Info,
                                tr("The result of %1 is kept until the next scan.").arg(m_root),
                                &m_showResult);
    m_pages->setCurrentWidget(start);
    emit startPageShown();
}

QString ScanForm::shownRoot(const QString &chosen)
{
    const QString root = core::walkRoot(chosen);
    return root.endsWith(QLatin1Char(':')) ? root + QLatin1Char('\\') : root;
}

QString ScanForm::failureText(const QString &error)
{
    return error.isEmpty() ? QString() : tr("The scan was not finished. %1").arg(error);
}

void ScanForm::showProgress(const core::ScanProgress &progress)
{
    if (!progress.path.isEmpty())
        handleUpdatePath(progress.path);
    handleUpdateTotalSubFolder(progress.totalSteps);
    handleUpdateScanProgress();
    handleUpdateTotalItemScan(progress.items);
}
