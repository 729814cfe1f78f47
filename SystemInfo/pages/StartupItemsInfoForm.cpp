// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/pages/StartupItemsInfoForm.h"

using systeminfo::PageId;

LoadStartupItemsInfoThread::LoadStartupItemsInfoThread(QStandardItemModel *model)
    : LoadPageThread(PageId::StartupItems, model)
{
}

StartupItemsInfoForm::StartupItemsInfoForm(QWidget *parent)
    : InfoPageForm(PageId::StartupItems, QStringLiteral("startupItemsTreeView"),
                   make<LoadStartupItemsInfoThread>, parent)
{
}
