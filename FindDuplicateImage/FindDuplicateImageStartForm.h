// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/StartPage.h"

// The start page for finding similar images: a chosen or dropped folder, or one of the user's usual image
// folders.
class FindDuplicateImageStartForm : public StartPage
{
    Q_OBJECT

public:
    explicit FindDuplicateImageStartForm(QWidget *parent = nullptr);
};
