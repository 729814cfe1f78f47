// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ScanPage.h"

// What is shown while a scan runs.
class DiskUsageScanProgressForm : public ScanPage
{
    Q_OBJECT

public:
    using ScanPage::ScanPage;
};
