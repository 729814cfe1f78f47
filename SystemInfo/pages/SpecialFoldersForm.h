// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

class LoadSpecialFoldersInfoThread : public LoadPageThread
{
    Q_OBJECT

public:
    explicit LoadSpecialFoldersInfoThread(QStandardItemModel *model);
};

class SpecialFoldersForm : public InfoPageForm
{
    Q_OBJECT

public:
    explicit SpecialFoldersForm(QWidget *parent = nullptr);
};
