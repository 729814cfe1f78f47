// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

class LoadEnvironmentVarsInfoThread : public LoadPageThread
{
    Q_OBJECT

public:
    explicit LoadEnvironmentVarsInfoThread(QStandardItemModel *model);
};

class EnvironmentVarsInfoForm : public InfoPageForm
{
    Q_OBJECT

public:
    explicit EnvironmentVarsInfoForm(QWidget *parent = nullptr);
};
