// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

class LoadMemoryInfoThread : public LoadPageThread
{
    Q_OBJECT

public:
    explicit LoadMemoryInfoThread(QStandardItemModel *model);
};

class MemoryInfoForm : public InfoPageForm
{
    Q_OBJECT

public:
    explicit MemoryInfoForm(QWidget *parent = nullptr);
};
