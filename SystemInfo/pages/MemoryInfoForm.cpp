// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/pages/MemoryInfoForm.h"

using systeminfo::PageId;

LoadMemoryInfoThread::LoadMemoryInfoThread(QStandardItemModel *model) : LoadPageThread(PageId::Memory, model)
{
}

MemoryInfoForm::MemoryInfoForm(QWidget *parent)
    : InfoPageForm(PageId::Memory, QStringLiteral("memoryTreeView"), make<LoadMemoryInfoThread>, parent)
{
}
