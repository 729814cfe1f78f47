// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/StartPage.h"

// The start page: choose a folder or drop one.
class FindDuplicateStartForm : public StartPage
{
    Q_OBJECT

public:
    explicit FindDuplicateStartForm(QWidget *parent = nullptr);
};
