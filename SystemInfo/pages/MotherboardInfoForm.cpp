// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/pages/MotherboardInfoForm.h"

using systeminfo::PageId;

LoadMotherboardInfoThread::LoadMotherboardInfoThread(QStandardItemModel *model)
    : LoadPageThread(PageId::Motherboard, model)
{
}

MotherboardInfoForm::MotherboardInfoForm(QWidget *parent)
    : InfoPageForm(PageId::Motherboard, QStringLiteral("motherboardTreeView"),
                   make<LoadMotherboardInfoThread>, parent)
{
}
