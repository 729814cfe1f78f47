// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

class LoadInfoThread : public LoadPageThread
{
    Q_OBJECT

public:
    explicit LoadInfoThread(QStandardItemModel *model);
};

class GeneralInfoForm : public InfoPageForm
{
    Q_OBJECT

public:
    explicit GeneralInfoForm(QWidget *parent = nullptr);
};
