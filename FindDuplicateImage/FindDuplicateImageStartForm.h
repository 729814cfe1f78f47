// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/StartPage.h"

// Where a scan for pictures that look alike begins: a folder chosen, dropped, or one of those where pictures
// usually are.
class FindDuplicateImageStartForm : public StartPage
{
    Q_OBJECT

public:
    explicit FindDuplicateImageStartForm(QWidget *parent = nullptr);
};
