// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

class LoadTaskSchedulerInfoThread : public LoadPageThread
{
    Q_OBJECT

public:
    explicit LoadTaskSchedulerInfoThread(QStandardItemModel *model);
};

class TaskSchedulerInfoForm : public InfoPageForm
{
    Q_OBJECT

public:
    explicit TaskSchedulerInfoForm(QWidget *parent = nullptr);
};
