// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/pages/TaskSchedulerInfoForm.h"

using systeminfo::PageId;

LoadTaskSchedulerInfoThread::LoadTaskSchedulerInfoThread(QStandardItemModel *model)
    : LoadPageThread(PageId::TaskScheduler, model)
{
}

TaskSchedulerInfoForm::TaskSchedulerInfoForm(QWidget *parent)
    : InfoPageForm(PageId::TaskScheduler, QStringLiteral("taskSchedulerTreeView"),
                   make<LoadTaskSchedulerInfoThread>, parent)
{
}
