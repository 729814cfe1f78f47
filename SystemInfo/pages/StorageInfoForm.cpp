// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/pages/StorageInfoForm.h"

using systeminfo::PageId;

LoadStorageInfoThread::LoadStorageInfoThread(QStandardItemModel *model)
    : LoadPageThread(PageId::Storage, model)
{
}

StorageInfoForm::StorageInfoForm(QWidget *parent)
    : InfoPageForm(PageId::Storage, QStringLiteral("storageTreeView"), make<LoadStorageInfoThread>, parent)
{
}
