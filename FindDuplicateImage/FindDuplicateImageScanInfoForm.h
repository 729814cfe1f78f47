// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ScanPage.h"

// Shown while images are being scanned.
class FindDuplicateImageScanInfoForm : public ScanPage
{
    Q_OBJECT

public:
    using ScanPage::ScanPage;
};
