// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ScanPage.h"

// What is shown while pictures are scanned, and while the report about them is prepared.
class FindDuplicateImageScanInfoForm : public ScanPage
{
    Q_OBJECT

public:
    using ScanPage::ScanPage;

    void begin(const QString &root);
    void showPreparing();
    void showStopping();
};
