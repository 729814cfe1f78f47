// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/pages/SpecialFoldersForm.h"

using systeminfo::PageId;

LoadSpecialFoldersInfoThread::LoadSpecialFoldersInfoThread(QStandardItemModel *model)
    : LoadPageThread(PageId::SpecialFolders, model)
{
}

SpecialFoldersForm::SpecialFoldersForm(QWidget *parent)
    : InfoPageForm(PageId::SpecialFolders, QStringLiteral("specialFoldersTreeView"),
                   make<LoadSpecialFoldersInfoThread>, parent)
{
}
