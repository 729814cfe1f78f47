// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

class LoadStorageInfoThread : public LoadPageThread
{
    Q_OBJECT

public:
    explicit LoadStorageInfoThread(QStandardItemModel *model);
};

class StorageInfoForm : public InfoPageForm
{
    Q_OBJECT

public:
    explicit StorageInfoForm(QWidget *parent = nullptr);
};
