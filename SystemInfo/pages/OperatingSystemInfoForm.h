// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

class LoadOperatingSystemInfoThread : public LoadPageThread
{
    Q_OBJECT

public:
    explicit LoadOperatingSystemInfoThread(QStandardItemModel *model);
};

class OperatingSystemInfoForm : public InfoPageForm
{
    Q_OBJECT

public:
    explicit OperatingSystemInfoForm(QWidget *parent = nullptr);
};
