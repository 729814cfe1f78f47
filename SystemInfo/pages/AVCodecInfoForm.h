// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

class LoadAVCodecInfoThread : public LoadPageThread
{
    Q_OBJECT

public:
    explicit LoadAVCodecInfoThread(QStandardItemModel *model);
};

class AVCodecInfoForm : public InfoPageForm
{
    Q_OBJECT

public:
    explicit AVCodecInfoForm(QWidget *parent = nullptr);
};
