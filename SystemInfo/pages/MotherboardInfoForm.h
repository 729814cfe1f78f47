// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

class LoadMotherboardInfoThread : public LoadPageThread
{
    Q_OBJECT

public:
    explicit LoadMotherboardInfoThread(QStandardItemModel *model);
};

class MotherboardInfoForm : public InfoPageForm
{
    Q_OBJECT

public:
    explicit MotherboardInfoForm(QWidget *parent = nullptr);
};
