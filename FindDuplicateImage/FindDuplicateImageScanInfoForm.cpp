// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageScanInfoForm.h"

void FindDuplicateImageScanInfoForm::begin(const QString &root)
{
    ScanPage::begin(tr("Scanning in progress. Please wait ..."), root);
}

void FindDuplicateImageScanInfoForm::showPreparing()
{
    setTitle(tr("Preparing report. Please wait..."));
}

void FindDuplicateImageScanInfoForm::showStopping()
{
    ScanPage::showStopping(tr("Stopping the scan ..."));
}
