// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

class LoadStartupItemsInfoThread : public LoadPageThread
{
    Q_OBJECT

public:
    explicit LoadStartupItemsInfoThread(QStandardItemModel *model);
};

class StartupItemsInfoForm : public InfoPageForm
{
    Q_OBJECT

public:
    explicit StartupItemsInfoForm(QWidget *parent = nullptr);
};
