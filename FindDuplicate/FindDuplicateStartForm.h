// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/StartPage.h"

// Where a scan begins: any folder, or one dropped on the page.
class FindDuplicateStartForm : public StartPage
{
    Q_OBJECT

public:
    explicit FindDuplicateStartForm(QWidget *parent = nullptr);
};
