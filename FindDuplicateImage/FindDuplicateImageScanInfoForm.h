// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ScanPage.h"

// What is shown while pictures are scanned.
class FindDuplicateImageScanInfoForm : public ScanPage
{
    Q_OBJECT

public:
    using ScanPage::ScanPage;
};
