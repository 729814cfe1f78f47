// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ScanPage.h"

// Shown while a scan is running.
class DiskUsageScanProgressForm : public ScanPage
{
    Q_OBJECT

public:
    using ScanPage::ScanPage;
};
