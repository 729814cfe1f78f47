// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/pages/GeneralInfoForm.h"

using systeminfo::PageId;

LoadInfoThread::LoadInfoThread(QStandardItemModel *model) : LoadPageThread(PageId::General, model) {}

GeneralInfoForm::GeneralInfoForm(QWidget *parent)
    : InfoPageForm(PageId::General, QStringLiteral("windowsTreeView"), make<LoadInfoThread>, parent)
{
}
