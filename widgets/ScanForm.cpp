// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ScanForm.h"

#include "core/FolderWalk.h"

ScanForm::ScanForm(ScanPage *progress, QWidget *parent)
    : FLWidget(parent),
      m_pages(new QStackedLayout(this)),
      m_progress(progress),
      m_jobs(this)
{
    m_pages->addWidget(m_progress);
    connect(m_progress, &ScanPage::scanCancel, this, &ScanForm::handleScanCancel);
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
