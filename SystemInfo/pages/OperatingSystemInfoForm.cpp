// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/pages/OperatingSystemInfoForm.h"

using systeminfo::PageId;

LoadOperatingSystemInfoThread::LoadOperatingSystemInfoThread(QStandardItemModel *model)
    : LoadPageThread(PageId::OperatingSystem, model)
{
}

OperatingSystemInfoForm::OperatingSystemInfoForm(QWidget *parent)
    : InfoPageForm(PageId::OperatingSystem, QStringLiteral("operatingSystemTreeView"),
                   make<LoadOperatingSystemInfoThread>, parent)
{
}
