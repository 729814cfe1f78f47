// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageScanProgressForm.h"

void DiskUsageScanProgressForm::begin(const QString &root)
{
    ScanPage::begin(tr("Scanning in progress. Please wait ..."), root);
}

void DiskUsageScanProgressForm::showStopping()
{
    ScanPage::showStopping(tr("Stopping the scan ..."));
}
