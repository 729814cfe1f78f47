// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

class LoadCPUInfoThread : public LoadPageThread
{
    Q_OBJECT

public:
    explicit LoadCPUInfoThread(QStandardItemModel *model);
};

class CPUInfoForm : public InfoPageForm
{
    Q_OBJECT

public:
    explicit CPUInfoForm(QWidget *parent = nullptr);
};
