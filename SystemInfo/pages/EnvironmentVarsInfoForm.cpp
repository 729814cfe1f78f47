// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/pages/EnvironmentVarsInfoForm.h"

using systeminfo::PageId;

LoadEnvironmentVarsInfoThread::LoadEnvironmentVarsInfoThread(QStandardItemModel *model)
    : LoadPageThread(PageId::EnvironmentVariables, model)
{
}

EnvironmentVarsInfoForm::EnvironmentVarsInfoForm(QWidget *parent)
    : InfoPageForm(PageId::EnvironmentVariables, QStringLiteral("environmentVarsTreeView"),
                   make<LoadEnvironmentVarsInfoThread>, parent)
{
}
