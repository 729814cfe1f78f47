// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/pages/CPUInfoForm.h"

using systeminfo::PageId;

LoadCPUInfoThread::LoadCPUInfoThread(QStandardItemModel *model) : LoadPageThread(PageId::Cpu, model) {}

CPUInfoForm::CPUInfoForm(QWidget *parent)
    : InfoPageForm(PageId::Cpu, QStringLiteral("cpuTreeView"), make<LoadCPUInfoThread>, parent)
{
}
